#pragma once

// CParserHelperRecord is a binary record opened for reading, for the sources of this folder: its
// header and index decoded, its data left as they are until an element is asked for.
//
//     CParserHelperRecord record;
//     if (!record.Open(bytes)) ...                    // another version
//     hxJson::Value value;
//     record.ReadElement(record.Index().via.array.ptr[0], value);
//
// The bytes must outlive the object. Each part is gone over before memory is taken for it: nothing
// is nested deeper than CParserHelper::MaxDepth, and there are no more elements than bytes. What is
// malformed throws as CParserHelper::GetParserInfo tells.

#include "host/json/hxjson.h"

#include <cstddef>
#include <string_view>

#include <msgpack/unpack.hpp>

class CParserHelperRecord {
public:
    // False for a record of another version, of which nothing else can be asked.
    bool Open(std::string_view bytes);

    std::string_view Header() const { return m_header; }
    // Object 3 as it is.
    const msgpack::object& Index() const { return m_index.get(); }
    // Where the data begin; at most the length of the record.
    std::size_t DataStart() const { return m_dataStart; }

    // Reads the data at an offset of the index into `value`. All that one record reads is no more
    // than its data, or elements overlap: that is malformed too, since a short record could ask for
    // any amount of memory by it.
    void ReadElement(const msgpack::object& offset, hxJson::Value& value);

private:
    msgpack::object_handle Unpack(std::size_t& place) const;

    std::string_view m_bytes;
    std::string_view m_header;
    msgpack::object_handle m_index;
    std::size_t m_dataStart = 0;
    std::size_t m_read = 0;  // bytes of elements
};
