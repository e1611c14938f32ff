#pragma once
// Files that survive a killed process and a lost power supply. Paths are UTF-8 paths of the operating system.

#include <cstddef>
#include <string>
#include <string_view>

namespace tilm {

enum class FileState { missing, unreadable, good };

// Reads a file of at most `limit` bytes; a larger one is unreadable.
FileState read_file(const std::string &path, size_t limit, std::string &bytes);

struct WriteResult {
    bool opened = false;
    int error = 0; // the operating system's number, 0 for success
};

// Writes and waits until the bytes are on the disk.
WriteResult write_durable(const std::string &path, std::string_view bytes);

// Puts `fresh` in the place of `path` and keeps what was there as `backup`. At every moment either `path` or `backup`
// is a whole file. 0 or the operating system's error number; on an error `path` is as it was.
int replace_keeping_backup(const std::string &path, const std::string &fresh, const std::string &backup);

// Renames, replacing an earlier file of that name.
int move_file(const std::string &from, const std::string &to);

void remove_file(const std::string &path);

} // namespace tilm
