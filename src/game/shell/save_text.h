#pragma once
// The save document as text: what may be stored, and what may be read back.

#include <string>

#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace tilm {
using namespace godot;

// The value, or where it holds what JSON cannot carry a copy without: numbers that are not finite become 0, and what is
// nested too deep is left out. `repairs` counts both.
Variant storable(const Variant &value, int &repairs);

// The bytes of a document; what is not storable is repaired with one log line.
std::string document_bytes(const Dictionary &doc);

// False where the bytes are no JSON object or would hurt a parser. Never logs, never crashes.
bool parse_document(const std::string &bytes, Dictionary &doc);

enum class LoadState { missing, unreadable, good };
LoadState load_document(const String &path, Dictionary &doc, std::string &bytes);

// Writes beside the file, reads it back, and puts it in its place; the former file stays as ".bak". Failures are logged
// and leave the former file as it is.
bool store_document(const String &path, const Dictionary &doc);

// Sets a file aside as ".corrupt", replacing an earlier one.
void set_aside(const String &path);

std::string native_path(const String &path); // of the operating system, for a "user://" path

} // namespace tilm
