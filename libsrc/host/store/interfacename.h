#pragma once

// What is known about the names of interfaces without knowing the device: a name is a word for the
// kind of interface and a number behind it, and devices shorten the word ("Gi0/1") in most of their
// outputs. One table of kinds says which words mean what.
//
//     ExpandedInterfaceName("Gi 0/1")             // "GigabitEthernet0/1"
//     ExpandedInterfaceName("ge-0/0/1")           // "ge-0/0/1", not shortened
//     CanonicalInterfaceName("Te0/0/0/1")         // "ten0/0/0/1"
//     CanonicalInterfaceName("TenGigE0/0/0/1")    // the same
//
// Pure functions, safe on any thread. Names are bytes; only ASCII letters have case.

#include "host/runtime/tzexport.h"

#include <string>
#include <string_view>

// The name with its word written out, and without blanks around it or between word and number. A
// name whose word is written out already keeps the word's case, since kinds of systems differ in
// it. A name whose word isn't in the table, or which isn't a word and a number, comes back as it
// is. Where a word means different things on different systems, the most common one is taken; a
// device's own rows in the inventory decide better.
TZPARSER_API std::string ExpandedInterfaceName(std::string_view name);

// A text that is equal for all ways to write one interface of a device: lower case, no blanks, and
// one word for all words of the table that can mean the same kind. Only for comparing. Stores keep
// it beside the names, so a change to the table must come with a step of their schema.
TZPARSER_API std::string CanonicalInterfaceName(std::string_view name);

// Whether the first of two names with the canonical form of `asked` is the better answer to it:
// equal, else equal but for case, else longer, else first in byte order.
bool IsBetterInterfaceName(std::string_view first, std::string_view second, std::string_view asked);
