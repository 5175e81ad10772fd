// A selection in the order of the text is found by going through the lines once. When a line isn't
// found that way, the lines of the text are brought together by their text, those of one text in
// ascending order, and serve for the rest of the selection. Of a place in that order it is known
// which is the next that isn't taken yet; these ways are shortened whenever they are gone, so a
// text of equal lines costs no more than one of different ones.
#include "tzparser/select/selectedlines.h"

#include "host/diff/textslots.h"
#include "tzparser/rule/applinestatus.h"
#include "tzparser/rule/appsamplelines.h"
#include "tzparser/text/appstrutil.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace {

std::size_t Index(int number) {
    return static_cast<std::size_t>(number);
}

// The open lines of a range.
struct OpenLines {
    const CAppSampleLines& lines;
    const CAppLineStatus& status;
    int begin;
    int end;

    std::string_view Text(int line) const { return AppStrUtil::StrTrimmed(lines.View(line)); }
};

class CEqualLines {
public:
    // The lines found before, which ascend, are taken.
    CEqualLines(const OpenLines& open, const std::vector<SelectedLine>& found)
        : m_slots(Index(open.end - open.begin)) {
        std::vector<Entry> entries;
        entries.reserve(Index(open.end - open.begin));
        for (int line = open.status.NextOpen(open.begin); line < open.end;
             line = open.status.NextOpen(line + 1)) {
            const auto text = open.Text(line);
            if (!text.empty()) entries.push_back({Add(text), line});
        }
        Arrange(entries, found);
    }

    // Takes the first free line of a text from a line on, otherwise the first free one; -1 when all
    // are taken.
    int Take(std::string_view text, int from) {
        const int number = m_slots.Find(text, [this](int known) { return m_texts[Index(known)]; });
        if (number < 0) return -1;
        const int begin = m_begins[Index(number)];
        const int end = m_begins[Index(number) + 1];
        const auto first = m_lines.begin();
        const auto behind = std::lower_bound(first + begin, first + end, from);
        int place = NextFree(static_cast<int>(behind - first));
        if (place >= end) place = NextFree(begin);
        if (place >= end) return -1;
        m_nextFree[Index(place)] = place + 1;
        return m_lines[Index(place)];
    }

private:
    struct Entry {
        int number;  // of the text
        int line;
    };

    int Add(std::string_view text) {
        const auto next = static_cast<int>(m_texts.size());
        const int number =
            m_slots.Add(text, next, [this](int known) { return m_texts[Index(known)]; });
        if (number == next) m_texts.push_back(text);
        return number;
    }

    // By the number of the text, the order of the lines staying.
    void Arrange(const std::vector<Entry>& entries, const std::vector<SelectedLine>& found) {
        m_begins.assign(m_texts.size() + 1, 0);
        for (const auto& entry : entries) ++m_begins[Index(entry.number) + 1];
        std::partial_sum(m_begins.begin(), m_begins.end(), m_begins.begin());
        m_lines.resize(entries.size());
        m_nextFree.resize(entries.size() + 1);
        std::iota(m_nextFree.begin(), m_nextFree.end(), 0);
        auto places = m_begins;
        auto taken = found.begin();
        for (const auto& [number, line] : entries) {
            const int place = places[Index(number)]++;
            m_lines[Index(place)] = line;
            if (taken == found.end() || taken->line != line) continue;
            m_nextFree[Index(place)] = place + 1;
            ++taken;
        }
    }

    int NextFree(int place) {
        int free = place;
        while (m_nextFree[Index(free)] != free) free = m_nextFree[Index(free)];
        while (place != free) {
            const int next = m_nextFree[Index(place)];
            m_nextFree[Index(place)] = free;
            place = next;
        }
        return free;
    }

    CTextSlots m_slots;
    std::vector<std::string_view> m_texts;  // by number
    std::vector<int> m_begins;              // where the lines of a text begin, and the end of all
    std::vector<int> m_lines;               // lines by their texts
    std::vector<int> m_nextFree;            // of each place: itself, or one nearer to a free one
};

// The first open line from one on with a text; -1 when there is none.
int FindForward(const OpenLines& open, std::string_view text, int from) {
    for (int line = open.status.NextOpen(from); line < open.end;
         line = open.status.NextOpen(line + 1))
        if (open.Text(line) == text) return line;
    return -1;
}

}  // namespace

// While the search goes forward only, every line behind the last one found is free.
std::vector<SelectedLine> FindSelectedLines(const CAppSampleLines& lines,
                                            const CAppLineStatus& status, int startLine,
                                            int endLine, std::string_view selected) {
    std::vector<SelectedLine> found;
    if (selected.empty() || startLine >= endLine) return found;
    const OpenLines open{lines, status, startLine, endLine};
    std::optional<CEqualLines> sources;
    int next = startLine;
    while (!selected.empty()) {
        const auto feed = selected.find('\n');
        const auto text = AppStrUtil::StrTrimmed(selected.substr(0, feed));
        selected.remove_prefix(feed == std::string_view::npos ? selected.size() : feed + 1);
        if (text.empty()) continue;
        int line = sources ? -1 : FindForward(open, text, next);
        if (line < 0) {
            if (!sources) sources.emplace(open, found);
            line = sources->Take(text, next);
        }
        if (line >= 0) next = line + 1;
        found.push_back({text, line});
    }
    return found;
}
