#include <vector>

#include "rules/json_guard.h"

namespace tilm::rules {

namespace {

// Walks the grammar with the open brackets in a list of its own: no depth of nesting can exhaust the stack.
class GrammarWalk {
public:
    GrammarWalk(std::string_view text, int depth)
        : at(text.data()), end(text.data() + text.size()), most(static_cast<size_t>(depth)) {}

    bool walk() {
        blanks();
        if (at == end || *at != '{' || !open('{')) {
            return false;
        }
        while (!brackets.empty()) {
            if (!step()) {
                return false;
            }
        }
        blanks();
        return at == end;
    }

private:
    const char *at;
    const char *end;
    size_t most;
    std::vector<char> brackets;
    bool fresh = false; // just behind an opening bracket

    void blanks() {
        while (at != end && (*at == ' ' || *at == '\n' || *at == '\t' || *at == '\r')) {
            ++at;
        }
    }

    bool take(char c) {
        if (at == end || *at != c) {
            return false;
        }
        ++at;
        return true;
    }

    bool open(char bracket) {
        ++at;
        brackets.push_back(bracket);
        fresh = true;
        return brackets.size() <= most;
    }

    // One member or element, or the closing bracket.
    bool step() {
        const bool object = brackets.back() == '{';
        blanks();
        if (take(object ? '}' : ']')) {
            brackets.pop_back();
            fresh = false;
            return true;
        }
        if (!fresh && !take(',')) {
            return false;
        }
        fresh = false;
        blanks();
        if (object) {
            if (!string()) {
                return false;
            }
            blanks();
            if (!take(':')) {
                return false;
            }
            blanks();
        }
        return value();
    }

    bool value() {
        if (at == end) {
            return false;
        }
        switch (*at) {
        case '{':
        case '[':
            return open(*at);
        case '"':
            return string();
        case 't':
            return word("true");
        case 'f':
            return word("false");
        case 'n':
            return word("null");
        default:
            return number();
        }
    }

    bool word(std::string_view text) {
        if (!std::string_view(at, static_cast<size_t>(end - at)).starts_with(text)) {
            return false;
        }
        at += text.size();
        return true;
    }

    bool string() {
        if (!take('"')) {
            return false;
        }
        while (at != end && *at != '"') {
            if (*at == '\0' || (*at == '\\' && !escape())) {
                return false;
            }
            ++at;
        }
        return take('"');
    }

    // Leaves `at` on the last character of the escape.
    bool escape() {
        ++at;
        if (at == end) {
            return false;
        }
        if (*at != 'u') {
            return std::string_view("\"\\/bfnrt").find(*at) != std::string_view::npos;
        }
        unsigned code = 0;
        for (int i = 0; i < 4; ++i) {
            ++at;
            if (at == end) {
                return false;
            }
            const size_t place = std::string_view("0123456789abcdefABCDEF").find(*at);
            if (place == std::string_view::npos) {
                return false;
            }
            code = code * 16 + static_cast<unsigned>(place < 16 ? place : place - 6);
        }
        return code != 0 && (code < 0xD800 || code > 0xDFFF);
    }

    bool digits() {
        const char *first = at;
        while (at != end && *at >= '0' && *at <= '9') {
            ++at;
        }
        return at != first;
    }

    bool number() {
        take('-');
        const bool zero = at != end && *at == '0';
        const char *first = at;
        if (!digits() || (zero && at - first > 1) || (take('.') && !digits())) {
            return false;
        }
        if (take('e') || take('E')) {
            if (!take('-')) {
                take('+');
            }
            return digits();
        }
        return true;
    }
};

} // namespace

bool is_json_object(std::string_view text, const JsonLimits &limits) {
    return text.size() <= limits.bytes && GrammarWalk(text, limits.depth).walk();
}

} // namespace tilm::rules
