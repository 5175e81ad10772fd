#pragma once

#include <string>
#include <string_view>
#include <vector>

// How lines that a design reader selected find their places in a text, in the plain form: each
// looks through all lines. The table of wanted results is made by hand, this by generated texts.
struct PlainSelection {
    std::vector<std::string> lines;
    std::vector<bool> open;

    static std::string Trim(const std::string& text) {
        const auto begin = text.find_first_not_of(" \t\n\v\f\r");
        return begin == std::string::npos
                   ? ""
                   : text.substr(begin, text.find_last_not_of(" \t\n\v\f\r") + 1 - begin);
    }

    // Closes what isn't selected; the answer has for each selected line its source or -1.
    std::vector<int> Keep(int startLine, int endLine, const std::vector<std::string>& selected) {
        std::vector<bool> matched(lines.size(), false);
        std::vector<int> sources;
        int next = startLine;
        for (const auto& text : selected) {
            int remembered = -1;
            int source = -1;
            for (int line = startLine; line < endLine && source < 0; ++line) {
                const auto at = static_cast<std::size_t>(line);
                if (!open[at]) continue;
                if (Trim(lines[at]).empty()) {
                    open[at] = false;
                    continue;
                }
                if (Trim(lines[at]) != Trim(text) || matched[at]) continue;
                if (line >= next)
                    source = line;
                else if (remembered < 0)
                    remembered = line;
            }
            if (source < 0) source = remembered;
            sources.push_back(source);
            if (source < 0) continue;
            matched[static_cast<std::size_t>(source)] = true;
            next = source;
        }
        for (std::size_t line = 0; line < lines.size(); ++line) {
            const bool isInside =
                static_cast<int>(line) >= startLine && static_cast<int>(line) < endLine;
            if (!isInside || !matched[line]) open[line] = false;
        }
        return sources;
    }
};
