#include "game/shell/durable_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tilm {

namespace fs = std::filesystem;

namespace {

fs::path native(const std::string &path) {
    return fs::path(std::u8string(path.begin(), path.end()));
}

#ifdef _WIN32

int last_error() {
    return static_cast<int>(GetLastError());
}

int write_all(const fs::path &path, std::string_view bytes, bool &opened) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return last_error();
    }
    opened = true;
    int error = 0;
    while (error == 0 && !bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
            error = last_error();
        }
        bytes.remove_prefix(written);
    }
    if (error == 0 && !FlushFileBuffers(file)) {
        error = last_error();
    }
    CloseHandle(file);
    return error;
}

int rename_over(const fs::path &from, const fs::path &to) {
    return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) ? 0 : last_error();
}

void sync_folder(const fs::path &) {} // the rename itself is written through

bool second_name(const fs::path &path, const fs::path &name) {
    return CreateHardLinkW(name.c_str(), path.c_str(), nullptr) != 0;
}

#else

int write_all(const fs::path &path, std::string_view bytes, bool &opened) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0) {
        return errno;
    }
    opened = true;
    int error = 0;
    while (error == 0 && !bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            error = written == 0 ? EIO : errno;
        }
    }
    // A file system that knows no syncing says so; it is no reason to refuse the save.
    if (error == 0 && fsync(file) != 0 && errno != EINVAL && errno != ENOTSUP) {
        error = errno;
    }
    if (close(file) != 0 && error == 0) {
        error = errno;
    }
    return error;
}

int rename_over(const fs::path &from, const fs::path &to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

// Makes the names in the folder last. Some file systems cannot; they order their renames themselves.
void sync_folder(const fs::path &path) {
    const int folder = open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
}

bool second_name(const fs::path &path, const fs::path &name) {
    return ::link(path.c_str(), name.c_str()) == 0;
}

#endif

} // namespace

FileState read_file(const std::string &path, size_t limit, std::string &bytes) {
    const fs::path file = native(path);
    std::error_code error;
    bytes.clear();
    if (!fs::exists(fs::symlink_status(file, error))) {
        return FileState::missing;
    }
    if (!fs::is_regular_file(file, error)) {
        return FileState::unreadable;
    }
#ifdef _WIN32
    FILE *in = _wfopen(file.c_str(), L"rb");
#else
    FILE *in = std::fopen(file.c_str(), "rb");
#endif
    if (in == nullptr) {
        return FileState::unreadable;
    }
    char block[65536];
    size_t got = 0;
    while (bytes.size() <= limit && (got = std::fread(block, 1, sizeof block, in)) > 0) {
        bytes.append(block, got);
    }
    const bool whole = std::ferror(in) == 0 && bytes.size() <= limit;
    std::fclose(in);
    return whole ? FileState::good : FileState::unreadable;
}

WriteResult write_durable(const std::string &path, std::string_view bytes) {
    WriteResult result;
    result.error = write_all(native(path), bytes, result.opened);
    return result;
}

int replace_keeping_backup(const std::string &path, const std::string &fresh, const std::string &backup) {
    const fs::path target = native(path);
    const fs::path old = native(backup);
    std::error_code error;
    const bool exists = fs::exists(target, error);
    bool moved = false;
    if (exists) {
        // A second name leaves `path` in place all the time. Where the file system knows no second names, `path` is
        // away for a moment and `backup` is the good file.
        fs::remove(old, error);
        if (!second_name(target, old)) {
            if (const int code = rename_over(target, old); code != 0) {
                return code;
            }
            moved = true;
        }
    }
    // The names are on the disk before the new file takes its place; a rename that is lost with the power leaves the
    // former file.
    sync_folder(target);
    const int code = rename_over(native(fresh), target);
    if (code != 0 && moved) {
        rename_over(old, target);
    }
    return code;
}

int move_file(const std::string &from, const std::string &to) {
    return rename_over(native(from), native(to));
}

void remove_file(const std::string &path) {
    std::error_code error;
    fs::remove(native(path), error);
}

} // namespace tilm
