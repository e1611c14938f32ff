#include "rules/translator.h"

#include <algorithm>

namespace tilm::rules {
namespace {

constexpr std::string_view isolate_on = "\xE2\x81\xA6";  // U+2066 left-to-right isolate
constexpr std::string_view isolate_off = "\xE2\x81\xA9"; // U+2069 pop directional isolate

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_latin(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool one_of(char c, std::string_view set) {
    return set.find(c) != std::string_view::npos;
}
// A byte within a character, not its first.
bool is_tail(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

bool in_number_hole(char c) {
    return is_digit(c) || one_of(c, "-+$.,:%/KMBH");
}

size_t count_characters(std::string_view text) {
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !is_tail(c); }));
}

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

std::string_view stripped(std::string_view s) {
    while (!s.empty() && is_blank(s.front())) {
        s.remove_prefix(1);
    }
    while (!s.empty() && is_blank(s.back())) {
        s.remove_suffix(1);
    }
    return s;
}

// Matches piece `index` and all that follows at `text`. Number holes take as much as they can, word holes as little,
// and both give way when the rest does not fit. `budget` bounds hopeless searches in long texts.
bool match_from(const SentenceRow &row, size_t index, std::string_view text, std::vector<std::string_view> &holes,
                int &budget) {
    const std::string &piece = row.pieces[index];
    if (!text.starts_with(piece) || --budget < 0) {
        return false;
    }
    text.remove_prefix(piece.size());
    if (index == row.words.size()) {
        return text.empty();
    }
    if (!row.words[index]) {
        size_t most = 0;
        while (most < text.size() && in_number_hole(text[most])) {
            ++most;
        }
        for (size_t n = most; n >= 1; --n) {
            holes[index] = text.substr(0, n);
            if (match_from(row, index + 1, text.substr(n), holes, budget)) {
                return true;
            }
        }
        return false;
    }
    const std::string &next = row.pieces[index + 1];
    for (size_t n = 1; n <= text.size() && text[n - 1] != '\n'; ++n) {
        if (n < text.size() && is_tail(text[n])) {
            continue;
        }
        if (!next.empty() && !text.substr(n).starts_with(next)) {
            continue;
        }
        holes[index] = text.substr(0, n);
        if (match_from(row, index + 1, text.substr(n), holes, budget)) {
            return true;
        }
    }
    return false;
}

// Length of the number that begins at `text`, 0 if none does.
size_t number_length(std::string_view text) {
    size_t n = 0;
    while (n < text.size() && one_of(text[n], "-+$")) {
        ++n;
    }
    if (n == text.size() || !is_digit(text[n])) {
        return 0;
    }
    while (n < text.size() && (is_digit(text[n]) || one_of(text[n], ".,:/KMBH"))) {
        ++n;
    }
    if (n < text.size() && text[n] == '%') {
        ++n;
    }
    return n;
}

bool in_latin_word(char c) {
    return is_latin(c) || is_digit(c) || one_of(c, "'._&-");
}

size_t latin_length(std::string_view text) {
    size_t n = 0;
    if (n < text.size() && one_of(text[n], "-+")) {
        ++n;
    }
    if (n < text.size() && text[n] == '$') {
        ++n;
    }
    if (n < text.size() && is_digit(text[n])) {
        while (n < text.size() && (is_digit(text[n]) || one_of(text[n], ".,:/KMBH%"))) {
            ++n;
        }
        if (n < text.size() && text[n] == '$') {
            ++n;
        }
        return n;
    }
    if (text.empty() || !is_latin(text[0])) {
        return 0;
    }
    n = 1;
    while (n < text.size() && in_latin_word(text[n])) {
        ++n;
    }
    while (n + 1 < text.size() && text[n] == ' ' && (is_latin(text[n + 1]) || is_digit(text[n + 1]))) {
        n += 2;
        while (n < text.size() && in_latin_word(text[n])) {
            ++n;
        }
    }
    return n;
}

template <typename Length>
std::string wrap_runs(std::string_view text, Length length_at) {
    std::string out;
    out.reserve(text.size() + 24);
    for (size_t i = 0; i < text.size();) {
        const size_t n = length_at(text.substr(i));
        if (n == 0) {
            out += text[i++];
            continue;
        }
        out += isolate_on;
        out += text.substr(i, n);
        out += isolate_off;
        i += n;
    }
    return out;
}

std::string unescaped(std::string_view cell) {
    std::string out;
    for (size_t i = 0; i < cell.size(); ++i) {
        if (cell[i] == '\\' && i + 1 < cell.size() && cell[i + 1] == 'n') {
            out += '\n';
            ++i;
        } else {
            out += cell[i];
        }
    }
    return out;
}

} // namespace

bool compile_row(std::string_view english, std::string_view translation, SentenceRow &row, std::string *why) {
    const auto fail = [&](const char *reason) {
        if (why != nullptr) {
            *why = reason;
        }
        return false;
    };
    row = SentenceRow();
    for (size_t start = 0;;) {
        const size_t open = english.find('{', start);
        const std::string_view piece = english.substr(start, open - start);
        row.pieces.emplace_back(piece);
        row.literal += count_characters(piece);
        if (open == std::string_view::npos) {
            break;
        }
        if (english.substr(open).starts_with("{#}")) {
            row.words.push_back(false);
            start = open + 3;
        } else if (english.substr(open).starts_with("{}")) {
            row.words.push_back(true);
            start = open + 2;
        } else {
            return fail("a brace in the English that is no hole");
        }
    }
    if (row.words.empty()) {
        return fail("no hole in the English");
    }
    if (english.size() == (row.words[0] ? 2U : 3U) && row.words.size() == 1) {
        return fail("nothing but a hole in the English"); // would be asked for itself without end
    }
    row.format = translation;
    std::vector<bool> used(row.words.size());
    for (size_t open = translation.find('{'); open != std::string_view::npos; open = translation.find('{', open + 1)) {
        const size_t close = translation.find('}', open);
        if (close != open + 2 || !is_digit(translation[open + 1])) {
            return fail("a brace in the translation that is no numbered hole");
        }
        const size_t index = static_cast<size_t>(translation[open + 1] - '0');
        if (index >= used.size()) {
            return fail("a hole in the translation that the English lacks");
        }
        used[index] = true;
    }
    if (std::find(used.begin(), used.end(), false) != used.end()) {
        return fail("a hole of the English is lost in the translation");
    }
    return true;
}

bool match_row(const SentenceRow &row, std::string_view text, std::vector<std::string_view> &holes) {
    if (!text.starts_with(row.pieces.front()) || !text.ends_with(row.pieces.back()) || text.size() < row.literal) {
        return false;
    }
    holes.assign(row.words.size(), {});
    int budget = 2000;
    return match_from(row, 0, text, holes, budget);
}

std::string fill_format(std::string_view format, const std::vector<std::string> &values) {
    std::string out;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '{' && i + 2 < format.size() && is_digit(format[i + 1]) && format[i + 2] == '}' &&
            static_cast<size_t>(format[i + 1] - '0') < values.size()) {
            out += values[static_cast<size_t>(format[i + 1] - '0')];
            i += 2;
        } else {
            out += format[i];
        }
    }
    return out;
}

bool has_letter(std::string_view text) {
    return std::any_of(text.begin(), text.end(), is_latin);
}

bool is_number_text(std::string_view text) {
    return text == "II" || std::all_of(text.begin(), text.end(), [](char c) { return c == ' ' || in_number_hole(c); });
}

std::string isolate_numbers(std::string_view text) {
    return wrap_runs(text, number_length);
}

std::string isolate_latin(std::string_view text) {
    std::string clean(text);
    for (const std::string_view mark : {isolate_on, isolate_off}) {
        for (size_t at = clean.find(mark); at != std::string::npos; at = clean.find(mark, at)) {
            clean.erase(at, mark.size());
        }
    }
    return wrap_runs(clean, latin_length);
}

std::vector<TablePair> read_table(std::string_view tsv, std::vector<std::string> &problems) {
    std::vector<TablePair> rows;
    int line_number = 0;
    while (!tsv.empty()) {
        const size_t end = tsv.find('\n');
        std::string_view line = tsv.substr(0, end);
        tsv = end == std::string_view::npos ? std::string_view() : tsv.substr(end + 1);
        ++line_number;
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (line.empty() || line.starts_with("##")) {
            continue;
        }
        const size_t tab = line.find('\t');
        if (tab == std::string_view::npos || tab == 0 || tab + 1 == line.size() ||
            line.find('\t', tab + 1) != std::string_view::npos) {
            problems.push_back("line " + std::to_string(line_number) + " is not two texts with a tab between");
            continue;
        }
        rows.push_back({unescaped(line.substr(0, tab)), unescaped(line.substr(tab + 1))});
    }
    return rows;
}

void Translator::load(std::string_view exact_tsv, std::string_view templates_tsv, std::string_view combinations_tsv,
                      std::vector<std::string> &problems) {
    std::vector<std::string> bad;
    for (TablePair &row : read_table(exact_tsv, bad)) {
        const auto [at, fresh] = exact.emplace(std::move(row.english), std::move(row.translation));
        if (!fresh) {
            bad.push_back("\"" + at->first + "\" stands twice");
        }
    }
    for (const std::string &text : bad) {
        problems.push_back("exact: " + text);
    }
    load_rows(templates_tsv, "templates", sentences, true, problems);
    load_rows(combinations_tsv, "combinations", combos, false, problems);
    cache.clear();
}

void Translator::load_rows(std::string_view tsv, std::string_view name, std::vector<SentenceRow> &rows, bool sort,
                           std::vector<std::string> &problems) {
    std::vector<std::string> bad;
    std::unordered_set<std::string> seen;
    for (const TablePair &pair : read_table(tsv, bad)) {
        SentenceRow row;
        std::string why;
        if (!seen.insert(pair.english).second) {
            bad.push_back("\"" + pair.english + "\" stands twice");
        } else if (!compile_row(pair.english, pair.translation, row, &why)) {
            bad.push_back("\"" + pair.english + "\": " + why);
        } else {
            rows.push_back(std::move(row));
        }
    }
    if (sort) {
        std::stable_sort(rows.begin(), rows.end(),
                         [](const SentenceRow &a, const SentenceRow &b) { return a.literal > b.literal; });
    }
    for (const std::string &text : bad) {
        problems.push_back(std::string(name) + ": " + text);
    }
}

std::string Translator::message(std::string_view src) {
    if (src.empty() || !has_letter(src) || is_number_text(src)) {
        return std::string(src);
    }
    std::string s(src);
    std::string result = translate_cached(s);
    return result == s ? s : isolate_numbers(result);
}

std::string Translator::translate_cached(const std::string &s) {
    if (!has_letter(s)) {
        return s;
    }
    if (const auto it = cache.find(s); it != cache.end()) {
        return it->second;
    }
    std::string result = translate(s);
    if (cache.size() >= cache_limit) {
        cache.clear();
    }
    cache[s] = result;
    return result;
}

std::string Translator::translate(const std::string &s) {
    if (const auto it = exact.find(s); it != exact.end()) {
        return it->second;
    }
    if (const std::string_view core = stripped(s); !core.empty() && core.size() != s.size()) {
        const size_t front = static_cast<size_t>(core.data() - s.data());
        return s.substr(0, front) + translate_cached(std::string(core)) + s.substr(front + core.size());
    }
    std::string out;
    if (try_rows(sentences, s, out)) {
        return out;
    }
    if (s.find('\n') != std::string::npos) {
        return join_parts(s, "\n");
    }
    for (const std::string_view gap : {std::string_view("   "), std::string_view("  ")}) {
        if (s.find(gap) != std::string::npos) {
            return join_parts(s, gap);
        }
    }
    if (try_rows(combos, s, out)) {
        return out;
    }
    if (on_miss && !is_number_text(s) && missed.insert(s).second) {
        on_miss(s);
    }
    return s;
}

bool Translator::try_rows(const std::vector<SentenceRow> &rows, const std::string &s, std::string &out) {
    std::vector<std::string_view> holes;
    for (const SentenceRow &row : rows) {
        if (!match_row(row, s, holes)) {
            continue;
        }
        std::vector<std::string> values;
        for (size_t i = 0; i < holes.size(); ++i) {
            const std::string hole(holes[i]);
            values.push_back(row.words[i] ? translate_cached(hole) : hole);
        }
        out = fill_format(row.format, values);
        return true;
    }
    return false;
}

std::string Translator::join_parts(const std::string &s, std::string_view gap) {
    std::string out;
    size_t start = 0;
    for (;;) {
        const size_t at = s.find(gap, start);
        out += translate_cached(s.substr(start, at - start));
        if (at == std::string::npos) {
            return out;
        }
        out += gap;
        start = at + gap.size();
    }
}

} // namespace tilm::rules
