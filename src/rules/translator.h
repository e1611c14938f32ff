#pragma once
// Turns finished English sentences into Arabic ones: an exact table, sentence templates with holes for numbers and
// words, and a few combinations that glue translated parts. All text is UTF-8.

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tilm::rules {

// A compiled template: literal pieces with a hole after each but the last.
struct SentenceRow {
    std::vector<std::string> pieces;
    std::vector<bool> words; // one per hole: true for "{}" (translated by itself), false for "{#}" (a number)
    std::string format;      // the translation with {0}, {1} ...
    size_t literal = 0;      // characters of all pieces
};

// False when the row's holes do not match its translation's or a brace is left open; *why then says what is wrong.
bool compile_row(std::string_view english, std::string_view translation, SentenceRow &row, std::string *why = nullptr);
// True when the whole text matches; `holes` gets each hole's text.
bool match_row(const SentenceRow &row, std::string_view text, std::vector<std::string_view> &holes);
std::string fill_format(std::string_view format, const std::vector<std::string> &values);

bool has_letter(std::string_view text);             // A-Z or a-z
bool is_number_text(std::string_view text);         // nothing but digits, signs, money marks and K M B H, or "II"
std::string isolate_numbers(std::string_view text); // wraps each number in left-to-right isolate marks
// Removes isolate marks that are in the text and wraps each number and each run of Latin words.
std::string isolate_latin(std::string_view text);

struct TablePair {
    std::string english;
    std::string translation;
};
// Rows "English<tab>translation", "\n" for a line feed, lines that begin with "##" are remarks. Bad rows are skipped
// and reported with their line number.
std::vector<TablePair> read_table(std::string_view tsv, std::vector<std::string> &problems);

class Translator {
public:
    static constexpr size_t cache_limit = 3001;

    // Loads the three tables; problems (duplicates, holes that do not match) are appended, the rows skipped.
    void load(std::string_view exact, std::string_view templates, std::string_view combinations,
              std::vector<std::string> &problems);

    // What the screen shows for `src`: translated with numbers isolated, or `src` itself.
    std::string message(std::string_view src);
    std::string translate_cached(const std::string &s);

    size_t cache_size() const { return cache.size(); }
    bool in_cache(const std::string &s) const { return cache.count(s) > 0; }
    size_t exact_count() const { return exact.size(); }
    size_t sentence_count() const { return sentences.size(); }
    size_t combination_count() const { return combos.size(); }

    std::function<void(const std::string &)> on_miss; // set to hear of each text without a row, once per text

private:
    std::string translate(const std::string &s);
    bool try_rows(const std::vector<SentenceRow> &rows, const std::string &s, std::string &out);
    std::string join_parts(const std::string &s, std::string_view gap);
    void load_rows(std::string_view tsv, std::string_view name, std::vector<SentenceRow> &rows, bool sort,
                   std::vector<std::string> &problems);

    std::unordered_map<std::string, std::string> exact;
    std::vector<SentenceRow> sentences;
    std::vector<SentenceRow> combos;
    std::unordered_map<std::string, std::string> cache;
    std::unordered_set<std::string> missed;
};

} // namespace tilm::rules
