#pragma once
// A look at text from outside before a parser sees it: size, nesting, well-formed UTF-8. It reads every byte once and
// needs no memory, so no input can hurt it.

#include <cstddef>
#include <string>
#include <string_view>

namespace tilm::rules {

struct JsonLimits {
    size_t bytes = 32U * 1024U * 1024U;
    int depth = 64; // nested objects and arrays
};

// Why the text must not be parsed: "" when it may be. It may still turn out to be no JSON.
std::string_view json_refusal(std::string_view text, const JsonLimits &limits = {});

// The text with each malformed UTF-8 byte replaced by '?'; good text comes back as it is.
std::string repaired_utf8(std::string_view text);

// Whether the text is one JSON object within the limits, read through to its end by the grammar. What it accepts the
// engine's parser accepts; it refuses escapes of UTF-16 halves, which we never write, and lets control characters and
// malformed bytes within strings pass, as the engine does.
bool is_json_object(std::string_view text, const JsonLimits &limits = {});

// How many bytes at the start are well-formed UTF-8; the whole size for good text.
size_t good_utf8_prefix(std::string_view text);

// Length in bytes of the well-formed UTF-8 character at the start of a text that is not empty, 0 if it is malformed.
size_t utf8_length(std::string_view text);

} // namespace tilm::rules
