#pragma once
// ERR_FAIL_* and friends: print where and why, then leave the function.

#include <godot_cpp/core/defs.hpp>

namespace godot {

class String;

void _err_print_error(const char *function, const char *file, int line, const char *error, const char *message,
                      bool editor_notify = false, bool is_warning = false);
void _err_print_error(const char *function, const char *file, int line, const char *error, const String &message,
                      bool editor_notify = false, bool is_warning = false);
void _err_print_error(const char *function, const char *file, int line, const String &error, const char *message = "",
                      bool editor_notify = false, bool is_warning = false);
void _err_print_error(const char *function, const char *file, int line, const String &error, const String &message,
                      bool editor_notify = false, bool is_warning = false);
void _err_print_error(const char *function, const char *file, int line, const char *error, bool editor_notify = false,
                      bool is_warning = false);
void _err_print_index_error(const char *function, const char *file, int line, int64_t index, int64_t size,
                            const char *index_str, const char *size_str, const char *message = "", bool fatal = false);
void _err_print_index_error(const char *function, const char *file, int line, int64_t index, int64_t size,
                            const char *index_str, const char *size_str, const String &message, bool fatal = false);
void _err_flush_stdout();

} // namespace godot

#define GDE_ERR_HERE FUNCTION_STR, __FILE__, __LINE__

#define GDE_ERR_INDEX(m_index, m_size, m_msg, m_leave)                                                                 \
    if (unlikely((m_index) < 0 || (m_index) >= (m_size))) {                                                            \
        ::godot::_err_print_index_error(GDE_ERR_HERE, m_index, m_size, _STR(m_index), _STR(m_size), m_msg);            \
        m_leave;                                                                                                       \
    } else                                                                                                             \
        ((void)0)

#define GDE_ERR_COND(m_cond, m_text, m_msg, m_leave)                                                                   \
    if (unlikely(m_cond)) {                                                                                            \
        ::godot::_err_print_error(GDE_ERR_HERE, m_text, m_msg);                                                        \
        m_leave;                                                                                                       \
    } else                                                                                                             \
        ((void)0)

#define ERR_FAIL_INDEX(m_index, m_size) GDE_ERR_INDEX(m_index, m_size, "", return )
#define ERR_FAIL_INDEX_MSG(m_index, m_size, m_msg) GDE_ERR_INDEX(m_index, m_size, m_msg, return )
#define ERR_FAIL_INDEX_V(m_index, m_size, m_retval) GDE_ERR_INDEX(m_index, m_size, "", return m_retval)
#define ERR_FAIL_INDEX_V_MSG(m_index, m_size, m_retval, m_msg) GDE_ERR_INDEX(m_index, m_size, m_msg, return m_retval)
#define ERR_FAIL_UNSIGNED_INDEX(m_index, m_size)                                                                       \
    GDE_ERR_COND((m_index) >= (m_size), "Index " _STR(m_index) " is out of bounds (" _STR(m_size) ").", "", return )
#define ERR_FAIL_UNSIGNED_INDEX_V(m_index, m_size, m_retval)                                                           \
    GDE_ERR_COND((m_index) >= (m_size), "Index " _STR(m_index) " is out of bounds (" _STR(m_size) ").", "",            \
                 return m_retval)

#define GDE_NULL_TEXT(m_param) "Parameter \"" _STR(m_param) "\" is null."
#define ERR_FAIL_NULL(m_param) GDE_ERR_COND((m_param) == nullptr, GDE_NULL_TEXT(m_param), "", return )
#define ERR_FAIL_NULL_MSG(m_param, m_msg) GDE_ERR_COND((m_param) == nullptr, GDE_NULL_TEXT(m_param), m_msg, return )
#define ERR_FAIL_NULL_V(m_param, m_retval)                                                                             \
    GDE_ERR_COND((m_param) == nullptr, GDE_NULL_TEXT(m_param), "", return m_retval)
#define ERR_FAIL_NULL_V_MSG(m_param, m_retval, m_msg)                                                                  \
    GDE_ERR_COND((m_param) == nullptr, GDE_NULL_TEXT(m_param), m_msg, return m_retval)

#define GDE_COND_TEXT(m_cond) "Condition \"" _STR(m_cond) "\" is true."
#define ERR_FAIL_COND(m_cond) GDE_ERR_COND(m_cond, GDE_COND_TEXT(m_cond), "", return )
#define ERR_FAIL_COND_MSG(m_cond, m_msg) GDE_ERR_COND(m_cond, GDE_COND_TEXT(m_cond), m_msg, return )
#define ERR_FAIL_COND_V(m_cond, m_retval) GDE_ERR_COND(m_cond, GDE_COND_TEXT(m_cond), "", return m_retval)
#define ERR_FAIL_COND_V_MSG(m_cond, m_retval, m_msg) GDE_ERR_COND(m_cond, GDE_COND_TEXT(m_cond), m_msg, return m_retval)
#define ERR_CONTINUE(m_cond)                                                                                           \
    if (unlikely(m_cond)) {                                                                                            \
        ::godot::_err_print_error(GDE_ERR_HERE, GDE_COND_TEXT(m_cond) " Continuing.");                                 \
        continue;                                                                                                      \
    } else                                                                                                             \
        ((void)0)
#define ERR_CONTINUE_MSG(m_cond, m_msg)                                                                                \
    if (unlikely(m_cond)) {                                                                                            \
        ::godot::_err_print_error(GDE_ERR_HERE, GDE_COND_TEXT(m_cond) " Continuing.", m_msg);                          \
        continue;                                                                                                      \
    } else                                                                                                             \
        ((void)0)
#define ERR_BREAK(m_cond)                                                                                              \
    if (unlikely(m_cond)) {                                                                                            \
        ::godot::_err_print_error(GDE_ERR_HERE, GDE_COND_TEXT(m_cond) " Breaking.");                                   \
        break;                                                                                                         \
    } else                                                                                                             \
        ((void)0)
#define ERR_BREAK_MSG(m_cond, m_msg)                                                                                   \
    if (unlikely(m_cond)) {                                                                                            \
        ::godot::_err_print_error(GDE_ERR_HERE, GDE_COND_TEXT(m_cond) " Breaking.", m_msg);                            \
        break;                                                                                                         \
    } else                                                                                                             \
        ((void)0)

#define ERR_FAIL() GDE_ERR_COND(true, "Method/function failed.", "", return )
#define ERR_FAIL_MSG(m_msg) GDE_ERR_COND(true, "Method/function failed.", m_msg, return )
#define ERR_FAIL_V(m_retval) GDE_ERR_COND(true, "Method/function failed.", "", return m_retval)
#define ERR_FAIL_V_MSG(m_retval, m_msg) GDE_ERR_COND(true, "Method/function failed.", m_msg, return m_retval)

#define ERR_PRINT(m_msg) ::godot::_err_print_error(GDE_ERR_HERE, m_msg)
#define ERR_PRINT_ED(m_msg) ::godot::_err_print_error(GDE_ERR_HERE, m_msg)
#define WARN_PRINT(m_msg) ::godot::_err_print_error(GDE_ERR_HERE, m_msg, "", false, true)
#define WARN_PRINT_ED(m_msg) ::godot::_err_print_error(GDE_ERR_HERE, m_msg, "", true, true)
#define GDE_PRINT_ONCE(m_print)                                                                                        \
    do {                                                                                                               \
        static bool printed_once = false;                                                                              \
        if (unlikely(!printed_once)) {                                                                                 \
            printed_once = true;                                                                                       \
            m_print;                                                                                                   \
        }                                                                                                              \
    } while (false)
#define ERR_PRINT_ONCE(m_msg) GDE_PRINT_ONCE(ERR_PRINT(m_msg))
#define WARN_PRINT_ONCE(m_msg) GDE_PRINT_ONCE(WARN_PRINT(m_msg))

#define CRASH_NOW_MSG(m_msg)                                                                                           \
    do {                                                                                                               \
        ::godot::_err_print_error(GDE_ERR_HERE, "FATAL: Method/function failed.", m_msg);                              \
        ::godot::_err_flush_stdout();                                                                                  \
        GENERATE_TRAP();                                                                                               \
    } while (false)
#define CRASH_NOW() CRASH_NOW_MSG("")
#define CRASH_COND_MSG(m_cond, m_msg)                                                                                  \
    if (unlikely(m_cond)) {                                                                                            \
        ::godot::_err_print_error(GDE_ERR_HERE, "FATAL: " GDE_COND_TEXT(m_cond), m_msg);                               \
        ::godot::_err_flush_stdout();                                                                                  \
        GENERATE_TRAP();                                                                                               \
    } else                                                                                                             \
        ((void)0)
#define CRASH_COND(m_cond) CRASH_COND_MSG(m_cond, "")

#ifdef DEV_ENABLED
#define DEV_ASSERT(m_cond) CRASH_COND(!(m_cond))
#else
#define DEV_ASSERT(m_cond) ((void)0)
#endif
