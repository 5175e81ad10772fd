#pragma once

#include "host/runtime/tzexport.h"

#include <array>
#include <string_view>

/// The capture expressions by which a typed variable of a statement reads its value, each with
/// exactly one capturing group. One table, read by the pattern compiler and by the classification
/// of value texts.
///
///     std::string_view text = GetAppCapture(AppCapture_Int);        // "(\-?\d+)"
///
/// Constant data; may be read from any thread at any time after load.
enum AppCapture_e {
    AppCapture_Bool,
    AppCapture_Int,
    AppCapture_Double,
    AppCapture_IP,
    AppCapture_IPv6,
    AppCapture_Mac,
    AppCapture_Percent,
    AppCapture_String,
    AppCapture_ConfigLet,
    AppCapture_MString,
    AppCapture_MWord,
    AppCapture_Count
};

struct AppCaptureRow {
    AppCapture_e capture;
    /// The type word: "bool", "int", "double", "ip", "ipv6", "mac", "percent", "string",
    /// "configlet", "mstring", "mword".
    std::string_view name;
    /// Perl syntax; valid for the process's lifetime.
    std::string_view expression;
};

using AppCaptureTable = std::array<AppCaptureRow, AppCapture_Count>;

/// All rows, indexed by `AppCapture_e`.
TZPARSER_API const AppCaptureTable& GetAppCaptures();

/// The expression of one capture.
TZPARSER_API std::string_view GetAppCapture(AppCapture_e capture);
