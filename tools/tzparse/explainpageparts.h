#pragma once

#include <string_view>

// The two halves of the page, which the build makes of page/* (see page/embed.cmake): the data go
// between them, as JSON inside a script element.
extern const std::string_view ExplainPageHead;
extern const std::string_view ExplainPageTail;
