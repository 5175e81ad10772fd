#include "tzparser/engine/parserhelperrecord.h"

#include "tzparser/engine/parserhelper.h"
#include "tzparser/engine/parserhelperkeys.h"

#include <cstdint>
#include <limits>
#include <vector>

#include <msgpack/null_visitor.hpp>
#include <msgpack/parse.hpp>

namespace {

// Goes over one object without keeping anything. Every element takes a byte at least, so more
// elements than there are bytes can't be there.
class CBoundsVisitor : public msgpack::null_visitor {
public:
    explicit CBoundsVisitor(std::size_t bytes) : m_bytesLeft(bytes) {}

    bool start_array(std::uint32_t count) {
        if (!Claim(count)) throw msgpack::array_size_overflow("more elements than bytes");
        return true;
    }
    bool end_array() {
        --m_depth;
        return true;
    }
    bool start_map(std::uint32_t count) {
        if (!Claim(2 * std::size_t{count}))
            throw msgpack::map_size_overflow("more pairs than bytes");
        return true;
    }
    bool end_map() { return end_array(); }
    void parse_error(std::size_t, std::size_t) { throw msgpack::parse_error("not msgpack"); }
    void insufficient_bytes(std::size_t, std::size_t) {
        throw msgpack::insufficient_bytes("cut off");
    }

private:
    bool Claim(std::size_t elements) {
        if (elements > m_bytesLeft) return false;
        m_bytesLeft -= elements;
        if (++m_depth > CParserHelper::MaxDepth) throw msgpack::depth_size_overflow("too deep");
        return true;
    }

    std::size_t m_bytesLeft;
    int m_depth = 0;
};

// Makes a JSON value of an element's data: scalars, texts and arrays of them. Elements that are
// being filled stay where they are, as only the innermost array grows.
class CValueVisitor : public CBoundsVisitor {
public:
    CValueVisitor(std::size_t bytes, hxJson::Value& value) : CBoundsVisitor(bytes), m_top(value) {}

    bool visit_nil() { return Add(hxJson::Value()); }
    bool visit_boolean(bool truth) { return Add(hxJson::Value(truth)); }
    bool visit_positive_integer(std::uint64_t number) {
        constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
        if (number > largest) return Add(hxJson::Value(number));
        return Add(hxJson::Value(static_cast<std::int64_t>(number)));
    }
    bool visit_negative_integer(std::int64_t number) { return Add(hxJson::Value(number)); }
    bool visit_float32(float number) { return Add(hxJson::Value(static_cast<double>(number))); }
    bool visit_float64(double number) { return Add(hxJson::Value(number)); }
    bool visit_str(const char* text, std::uint32_t length) {
        return Add(hxJson::Value(std::string_view(text, length)));
    }
    bool visit_bin(const char* bytes, std::uint32_t length) { return visit_str(bytes, length); }
    bool visit_ext(const char*, std::uint32_t) { throw msgpack::type_error(); }
    bool start_array(std::uint32_t count) {
        CBoundsVisitor::start_array(count);
        m_open.push_back(&Slot(hxJson::Value(hxJson::arrayValue)));
        return true;
    }
    bool end_array() {
        m_open.pop_back();
        return CBoundsVisitor::end_array();
    }
    bool start_map(std::uint32_t) { throw msgpack::type_error(); }

private:
    hxJson::Value& Slot(hxJson::Value&& value) {
        if (!m_open.empty()) return m_open.back()->append(std::move(value));
        return m_top = std::move(value);
    }
    bool Add(hxJson::Value&& value) {
        Slot(std::move(value));
        return true;
    }

    hxJson::Value& m_top;
    std::vector<hxJson::Value*> m_open;
};

// Texts aren't copied out of the record.
bool IsReferenced(msgpack::type::object_type, std::size_t, void*) {
    return true;
}

bool IsInteger32(const msgpack::object& object) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (object.type == msgpack::type::POSITIVE_INTEGER)
        return object.via.u64 <= std::uint64_t{Limits::max()};
    return object.type == msgpack::type::NEGATIVE_INTEGER && object.via.i64 >= Limits::min();
}

}  // namespace

msgpack::object_handle CParserHelperRecord::Unpack(std::size_t& place) const {
    const auto left = m_bytes.size() - place;
    CBoundsVisitor bounds(left);
    std::size_t end = place;
    msgpack::parse(m_bytes.data(), m_bytes.size(), end, bounds);
    const msgpack::unpack_limit limit(left, left, left, left, left, CParserHelper::MaxDepth);
    return msgpack::unpack(m_bytes.data(), m_bytes.size(), place, IsReferenced, nullptr, limit);
}

bool CParserHelperRecord::Open(std::string_view bytes) {
    m_bytes = bytes;
    std::size_t place = 0;
    const auto version = Unpack(place);
    if (!IsInteger32(version.get())) throw msgpack::type_error();
    if (version->type != msgpack::type::POSITIVE_INTEGER || version->via.u64 != RecordVersion)
        return false;
    const auto header = Unpack(place);
    if (header->type == msgpack::type::STR)
        m_header = {header->via.str.ptr, header->via.str.size};
    else if (header->type == msgpack::type::BIN)
        m_header = {header->via.bin.ptr, header->via.bin.size};
    else
        throw msgpack::type_error();
    m_index = Unpack(place);
    m_dataStart = place;
    return true;
}

void CParserHelperRecord::ReadElement(const msgpack::object& offset, hxJson::Value& value) {
    if (offset.type != msgpack::type::POSITIVE_INTEGER) throw msgpack::type_error();
    if (offset.via.u64 >= m_bytes.size() - m_dataStart)
        throw msgpack::insufficient_bytes("an offset behind the end");
    const auto begin = m_dataStart + static_cast<std::size_t>(offset.via.u64);
    std::size_t end = begin;
    CValueVisitor visitor(m_bytes.size() - begin, value);
    msgpack::parse(m_bytes.data(), m_bytes.size(), end, visitor);
    m_read += end - begin;
    if (m_read > m_bytes.size() - m_dataStart) throw msgpack::parse_error("elements overlap");
}
