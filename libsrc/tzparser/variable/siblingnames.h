#pragma once

#include "tzparser/variable/appvariabledef.h"

#include <string>
#include <string_view>
#include <unordered_set>

/// A name without its leading dollar signs.
inline std::string_view WithoutDollars(std::string_view name) {
    const std::size_t first = name.find_first_not_of('$');
    return first == std::string_view::npos ? std::string_view() : name.substr(first);
}

/// Whether a child of the one name is found by the other: they are equal, or the child's is the
/// alternative form. The alternative of a name that begins with "$" is the name without its leading
/// dollar signs, of any other "$" and the name. Doesn't allocate.
bool IsNameOrAlternative(std::string_view childName, std::string_view name);

/// The names of a node's children while it is filled with many at once, so that linking n children
/// doesn't compare each with all before it. Answers as `CAppVariableDef::GetChild` would.
///
///     SiblingNames names(node, count);
///     if (names.Claim(child->GetName())) ...link it, under that name...
///
/// Lives while the node does; used by one thread at a time.
class SiblingNames {
public:
    /// `adding` is how many children are to come.
    SiblingNames(const CAppVariableDef& node, std::size_t adding);

    /// Adds a name. False when `GetChild` would find a child for it; an empty name is never found.
    bool Claim(const std::string& name);

private:
    const CAppVariableDef& m_node;
    const bool m_isWide;
    std::unordered_set<std::string> m_names;  // of a wide node
};
