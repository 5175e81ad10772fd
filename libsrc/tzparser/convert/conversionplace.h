#pragma once

#include <cstddef>
#include <string>

// Paths to parts of a document, for people to read: "parserule[2].child.parserule[0].name". A key
// that isn't a plain word stands in quotes and brackets.

// The path of a member, and of an element, of what stands under `path`; an empty path is the
// document.
std::string MemberPath(const std::string& path, const std::string& key);
std::string ElementPath(const std::string& path, std::size_t index);

// The path as it is shown: a long one, as a hostile document can have for each of its bytes, has
// its middle left out.
std::string ShownPath(const std::string& path);
