// Errors and warnings go to the engine's own log.

#include <cstdio>
#include <cstring>

#include <godot_cpp/core/engine_interface.hpp>
#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/math.hpp>
#include <godot_cpp/variant/utility_functions.hpp>
#include <godot_cpp/variant/variant.hpp>

namespace godot {

void _err_print_error(const char *function, const char *file, int line, const char *error, const char *message,
                      bool editor_notify, bool is_warning) {
    const internal::EngineInterface &e = internal::gde;
    if (message && *message) {
        (is_warning ? e.print_warning_with_message : e.print_error_with_message)(error, message, function, file, line,
                                                                                 editor_notify);
    } else {
        (is_warning ? e.print_warning : e.print_error)(error, function, file, line, editor_notify);
    }
}

void _err_print_error(const char *function, const char *file, int line, const char *error, const String &message,
                      bool editor_notify, bool is_warning) {
    _err_print_error(function, file, line, error, message.utf8().get_data(), editor_notify, is_warning);
}

void _err_print_error(const char *function, const char *file, int line, const String &error, const char *message,
                      bool editor_notify, bool is_warning) {
    _err_print_error(function, file, line, error.utf8().get_data(), message, editor_notify, is_warning);
}

void _err_print_error(const char *function, const char *file, int line, const String &error, const String &message,
                      bool editor_notify, bool is_warning) {
    _err_print_error(function, file, line, error.utf8().get_data(), message.utf8().get_data(), editor_notify,
                     is_warning);
}

void _err_print_error(const char *function, const char *file, int line, const char *error, bool editor_notify,
                      bool is_warning) {
    _err_print_error(function, file, line, error, "", editor_notify, is_warning);
}

void _err_print_index_error(const char *function, const char *file, int line, int64_t index, int64_t size,
                            const char *index_str, const char *size_str, const char *message, bool) {
    char text[512];
    std::snprintf(text, sizeof(text), "Index %s = %lld is out of bounds (%s = %lld).", index_str,
                  static_cast<long long>(index), size_str, static_cast<long long>(size));
    _err_print_error(function, file, line, text, message);
}

void _err_print_index_error(const char *function, const char *file, int line, int64_t index, int64_t size,
                            const char *index_str, const char *size_str, const String &message, bool fatal) {
    _err_print_index_error(function, file, line, index, size, index_str, size_str, message.utf8().get_data(), fatal);
}

void _err_flush_stdout() {
    std::fflush(stdout);
}

namespace Math {
double random(double from, double to) {
    return UtilityFunctions::randf_range(from, to);
}
float random(float from, float to) {
    return float(UtilityFunctions::randf_range(from, to));
}
int random(int from, int to) {
    return int(UtilityFunctions::randi_range(from, to));
}
double randf() {
    return UtilityFunctions::randf();
}
uint32_t rand() {
    return uint32_t(UtilityFunctions::randi());
}
} // namespace Math

} // namespace godot
