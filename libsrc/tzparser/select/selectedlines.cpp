// The lines of the text are brought together by their text, those of one text in ascending order.
// Of a place in that order it is known which is the next that isn't taken yet; these ways are
// shortened whenever they are gone, so a text of equal lines costs no more than one of different
// ones.
#include "tzparser/select/selectedlines.h"

#include "tzparser/rule/applinestatus.h"
#include "tzparser/rule/appsamplelines.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace {

class CEqualLines {
public:
    CEqualLines(const CAppSampleLines& lines, const CAppLineStatus& status, int startLine,
                int endLine) {
        std::vector<std::pair<std::size_t, int>> found;  // number of the text, line
        for (int line = status.NextOpen(startLine); line < endLine;
             line = status.NextOpen(line + 1)) {
            const auto text = AppStrUtil::StrTrimmed(lines.View(line));
            if (text.empty()) continue;
            const auto entry = m_groups.emplace(text, m_groups.size()).first;
            found.emplace_back(entry->second, line);
        }
        Arrange(found);
    }

    // Takes the first free line of a text from a line on, otherwise the first free one; -1 when all
    // are taken.
    int Take(std::string_view text, int from) {
        const auto group = m_groups.find(text);
        if (group == m_groups.end()) return -1;
        const auto begin = m_begins[group->second];
        const auto end = m_begins[group->second + 1];
        const auto first = m_lines.begin();
        const auto behind = static_cast<std::size_t>(
            std::lower_bound(first + static_cast<std::ptrdiff_t>(begin),
                             first + static_cast<std::ptrdiff_t>(end), from) -
            first);
        auto place = NextFree(behind);
        if (place >= end) place = NextFree(begin);
        if (place >= end) return -1;
        m_nextFree[place] = place + 1;
        return m_lines[place];
    }

private:
    // By the number of the text, the order of the lines staying.
    void Arrange(const std::vector<std::pair<std::size_t, int>>& found) {
        m_begins.assign(m_groups.size() + 1, 0);
        for (const auto& entry : found) ++m_begins[entry.first + 1];
        std::partial_sum(m_begins.begin(), m_begins.end(), m_begins.begin());
        m_lines.resize(found.size());
        auto places = m_begins;
        for (const auto& [group, line] : found) m_lines[places[group]++] = line;
        m_nextFree.resize(found.size() + 1);
        std::iota(m_nextFree.begin(), m_nextFree.end(), std::size_t{0});
    }

    std::size_t NextFree(std::size_t place) {
        auto free = place;
        while (m_nextFree[free] != free) free = m_nextFree[free];
        while (place != free) {
            const auto next = m_nextFree[place];
            m_nextFree[place] = free;
            place = next;
        }
        return free;
    }

    std::unordered_map<std::string_view, std::size_t> m_groups;  // the number of each text
    std::vector<std::size_t> m_begins;    // where the lines of a text begin, and the end of all
    std::vector<int> m_lines;             // lines by their texts
    std::vector<std::size_t> m_nextFree;  // of each place: itself, or one nearer to a free one
};

}  // namespace

std::vector<SelectedLine> FindSelectedLines(const CAppSampleLines& lines,
                                            const CAppLineStatus& status, int startLine,
                                            int endLine, std::string_view selected) {
    std::vector<SelectedLine> found;
    if (selected.empty() || startLine >= endLine) return found;
    CEqualLines sources(lines, status, startLine, endLine);
    int next = startLine;
    while (!selected.empty()) {
        const auto feed = selected.find('\n');
        const auto text = AppStrUtil::StrTrimmed(selected.substr(0, feed));
        selected.remove_prefix(feed == std::string_view::npos ? selected.size() : feed + 1);
        if (text.empty()) continue;
        const int line = sources.Take(text, next);
        if (line >= 0) next = line;
        found.push_back({text, line});
    }
    return found;
}
