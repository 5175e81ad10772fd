// RapidJSON's event reader does the reading, in its iterative form; the handler builds the tree and
// keeps the depth limit. The text goes in as a stream that knows its length, but the reader takes a
// NUL byte for the end, so what it leaves unread is looked at afterwards.

#include "host/json/hxreader.h"

#include "host/json/realtext.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <iterator>
#include <limits>
#include <system_error>

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

namespace hxJson {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
// Numbers are taken as texts: the reader's own precise form counts the leading zeros of a 0 in
// "0e5", which C++ leaves undefined.
constexpr unsigned ReaderFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseCommentsFlag |
                                 rapidjson::kParseNumbersAsStringsFlag;
// The reader counts digits in an int.
constexpr size_t MaxTextSize = std::numeric_limits<int>::max();

struct ErrorWords {
    rapidjson::ParseErrorCode code;
    const char* words;
};
constexpr const char* NulWords = "A NUL byte in the text.";
constexpr const char* ControlWords = "A control character in a string; it needs an escape.";
constexpr const char* DepthWords = "Nested deeper than 1000 levels.";
constexpr const char* UnknownWords = "Not a JSON text.";
constexpr ErrorWords Errors[] = {
    {rapidjson::kParseErrorDocumentEmpty, "A value was expected."},
    {rapidjson::kParseErrorDocumentRootNotSingular,
     "Something stands behind the end of the document."},
    {rapidjson::kParseErrorValueInvalid, "A value was expected."},
    {rapidjson::kParseErrorObjectMissName, "The name of a member, in quotes, was expected."},
    {rapidjson::kParseErrorObjectMissColon, "A colon was expected behind the name of a member."},
    {rapidjson::kParseErrorObjectMissCommaOrCurlyBracket,
     "A comma or } was expected behind a member."},
    {rapidjson::kParseErrorArrayMissCommaOrSquareBracket,
     "A comma or ] was expected behind an element."},
    {rapidjson::kParseErrorStringUnicodeEscapeInvalidHex, "\\u needs four hexadecimal digits."},
    {rapidjson::kParseErrorStringUnicodeSurrogateInvalid, "Half of a surrogate pair stands alone."},
    {rapidjson::kParseErrorStringEscapeInvalid, "An escape that JSON does not know."},
    {rapidjson::kParseErrorStringMissQuotationMark, "The quote that ends a string is missing."},
    {rapidjson::kParseErrorNumberTooBig, "The number is too big."},
    {rapidjson::kParseErrorNumberMissFraction, "Digits were expected behind the decimal point."},
    {rapidjson::kParseErrorNumberMissExponent, "Digits were expected in the exponent."},
    {rapidjson::kParseErrorTermination, "The number is too big."},
    {rapidjson::kParseErrorUnspecificSyntaxError,
     "A comment that does not end, or a / that starts none."},
};
static_assert(Reader::MaxDepth == 1000, "the words above name the limit");

// The reader has no code of its own for control characters.
const char* WordsOf(rapidjson::ParseErrorCode code, char at) {
    if (at == '\0') return NulWords;
    const bool isControl = static_cast<unsigned char>(at) < 0x20;
    if (isControl && code == rapidjson::kParseErrorStringEscapeInvalid) return ControlWords;
    for (const ErrorWords& row : Errors) {
        if (row.code == code) return row.words;
    }
    return UnknownWords;
}

// Builds the tree. The open arrays and objects are held by pointer: a node does not move while it
// is open, since what holds it grows only after it has been closed.
class TreeBuilder {
public:
    explicit TreeBuilder(Value& root) : m_slot(&root) {}

    bool Null() { return Put(Value()); }
    bool Bool(bool truth) { return Put(Value(truth)); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        return PutNumber(std::string_view(text, length));
    }
    // The interface of the reader wants these; with numbers as texts it calls none.
    bool Int(int number) { return Put(Value(number)); }
    bool Uint(unsigned number) { return Put(Value(number)); }
    bool Int64(int64_t number) { return Put(Value(number)); }
    bool Uint64(uint64_t number) { return Put(Value(number)); }
    bool Double(double number) { return Put(Value(number)); }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        return Put(Value(std::string(text, length)));
    }
    bool StartObject() { return Open(objectValue); }
    bool StartArray() { return Open(arrayValue); }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool EndArray(rapidjson::SizeType) { return Close(); }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        m_slot = &(*m_open.back())[std::string_view(text, length)];
        return true;
    }

    // Whether the last call was refused for its depth.
    bool IsTooDeep() const { return m_isTooDeep; }

private:
    template <typename Integer>
    bool PutInteger(std::string_view text) {
        Integer number = 0;
        const char* const end = text.data() + text.size();
        const auto result = std::from_chars(text.data(), end, number);
        return result.ec == std::errc() && result.ptr == end && Put(Value(number));
    }

    bool PutNumber(std::string_view text) {
        if (PutInteger<long long>(text) || PutInteger<unsigned long long>(text)) return true;
        double number = 0.0;
        return ReadRealText(text, number) && Put(Value(number));
    }

    // In an array the value becomes a new element, else it goes where the last key, or the root,
    // is.
    Value& Place(Value&& value) {
        if (!m_open.empty() && m_open.back()->isArray())
            return m_open.back()->append(std::move(value));
        return *m_slot = std::move(value);
    }

    bool Put(Value&& value) {
        Place(std::move(value));
        return true;
    }

    bool Open(ValueType type) {
        m_isTooDeep = m_open.size() >= Reader::MaxDepth;
        if (m_isTooDeep) return false;
        m_open.push_back(&Place(Value(type)));
        return true;
    }

    bool Close() {
        m_open.pop_back();
        return true;
    }

    Value* m_slot;
    std::vector<Value*> m_open;
    bool m_isTooDeep = false;
};

}  // namespace

bool Reader::parse(const std::string& text, Value& root, bool) {
    Value document;
    bool isRead = false;
    try {
        isRead = ParseBytes(text, document);
    } catch (const std::exception&) {
        Fail(text, 0, "Out of memory.");
    }
    root = isRead ? std::move(document) : Value();
    return isRead;
}

bool Reader::parse(std::istream& stream, Value& root, bool collectComments) {
    std::string text;
    try {
        text.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    } catch (const std::exception&) {
        root = Value();
        return Fail(std::string_view(), 0, "The stream cannot be read.");
    }
    return parse(text, root, collectComments);
}

bool Reader::ParseBytes(std::string_view text, Value& document) {
    ClearError();
    const size_t start =
        text.substr(0, ByteOrderMark.size()) == ByteOrderMark ? ByteOrderMark.size() : 0;
    const std::string_view bytes = text.substr(start);
    if (bytes.size() > MaxTextSize) {
        return Fail(text, 0, "The text is too long.");
    }
    rapidjson::MemoryStream stream(bytes.data(), bytes.size());
    rapidjson::Reader reader;
    TreeBuilder builder(document);
    const rapidjson::ParseResult result = reader.Parse<ReaderFlags>(stream, builder);
    const size_t reached = result.IsError() ? result.Offset() : stream.Tell();
    const bool isAtEnd = reached >= bytes.size();
    if (isAtEnd && result.Code() == rapidjson::kParseErrorDocumentEmpty) return true;
    if (isAtEnd && !result.IsError()) return true;
    if (builder.IsTooDeep()) return Fail(text, start + reached, DepthWords);
    return Fail(text, start + reached, WordsOf(result.Code(), isAtEnd ? ' ' : bytes[reached]));
}

bool Reader::Fail(std::string_view text, size_t offset, const char* words) {
    const std::string_view before = text.substr(0, offset);
    const size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is 0
    const auto lines = std::count(before.begin(), before.end(), '\n');
    constexpr size_t most = std::numeric_limits<int>::max();
    m_offset = before.size();
    m_line = static_cast<int>(std::min(static_cast<size_t>(lines) + 1, most));
    m_column = static_cast<int>(std::min(before.size() - lineStart + 1, most));
    m_message =
        "line " + std::to_string(m_line) + ", column " + std::to_string(m_column) + ": " + words;
    return false;
}

void Reader::ClearError() {
    m_message.clear();
    m_offset = 0;
    m_line = 0;
    m_column = 0;
}

}  // namespace hxJson
