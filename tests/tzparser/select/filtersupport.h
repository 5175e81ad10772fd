#pragma once

#include "tzparser/select/appparserulefilter.h"

#include "support/letdump.h"
#include "support/ruletree.h"

inline CAppParseRuleFilter& FilterAt(CAppParseRule& parent, std::size_t index) {
    return dynamic_cast<CAppParseRuleFilter&>(*parent.Children().at(index));
}

// The open lines of a status, parted by blanks.
inline std::string DumpStatus(const AppLineStatus& status) {
    std::string dump;
    for (std::size_t line = 0; line < status.size(); ++line)
        if (status[line]) dump += (dump.empty() ? "" : " ") + std::to_string(line);
    return dump;
}
