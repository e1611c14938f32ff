#include "farm_items/goods_ledger.h"

#include <vector>

#include "farm_items/item_core.h"

namespace tilm {

namespace {

struct Books {
    bool open = false;
    uint32_t number = 0; // of this opening; goods of an earlier one are not counted
    int64_t came = 0;
    int64_t went = 0;
    // Verbs are literals, so few that a short list beats a map.
    std::vector<std::pair<const char *, int64_t>> came_by;
    std::vector<std::pair<const char *, int64_t>> went_by;
    std::vector<int64_t> faults_came; // by kind
    std::vector<int64_t> faults_went;
};

Books s_books;
const char *s_verb = nullptr;

void count(std::vector<std::pair<const char *, int64_t>> &rows, const char *verb) {
    for (auto &[name, n] : rows) {
        if (name == verb) {
            n++;
            return;
        }
    }
    rows.emplace_back(verb, 1);
}

void fault(std::vector<int64_t> &by_kind, KindId kind) {
    if (kind < 0) {
        return;
    }
    if (by_kind.size() <= static_cast<size_t>(kind)) {
        by_kind.resize(static_cast<size_t>(kind) + 1);
    }
    by_kind[static_cast<size_t>(kind)]++;
}

int64_t sum(const std::vector<std::pair<const char *, int64_t>> &rows, const std::string &verb) {
    int64_t total = 0;
    for (const auto &[name, n] : rows) {
        total += verb == name ? n : 0;
    }
    return total;
}

std::map<std::string, int64_t> told(std::vector<int64_t> &by_kind) {
    std::map<std::string, int64_t> out;
    for (size_t i = 0; i < by_kind.size(); i++) {
        if (by_kind[i] > 0) {
            out[item_kinds::name_of(static_cast<KindId>(i)).utf8().get_data()] = by_kind[i];
        }
    }
    by_kind.clear();
    return out;
}

} // namespace

GoodsVerb::GoodsVerb(const char *verb) : outer(s_verb) {
    s_verb = verb;
}

GoodsVerb::~GoodsVerb() {
    s_verb = outer;
}

void GoodsLedger::open() {
    const uint32_t number = s_books.number + 1;
    s_books = Books();
    s_books.open = true;
    s_books.number = number;
}

void GoodsLedger::close() {
    s_books.open = false;
}

void GoodsLedger::born(ItemCore *item) {
    if (!s_books.open) {
        return;
    }
    item->book = s_books.number;
    s_books.came++;
    if (s_verb) {
        count(s_books.came_by, s_verb);
    } else {
        fault(s_books.faults_came, item->kind_id);
    }
}

void GoodsLedger::mark_leaving(ItemCore *item, const char *verb) {
    item->leaves_by = verb;
}

void GoodsLedger::leave(ItemCore *item, const char *verb) {
    item->leaves_by = verb ? verb : s_verb;
    item->queue_free();
}

void GoodsLedger::died(const ItemCore *item) {
    if (!s_books.open || item->book != s_books.number) {
        return;
    }
    s_books.went++;
    if (item->leaves_by) {
        count(s_books.went_by, item->leaves_by);
    } else {
        fault(s_books.faults_went, item->kind_id);
    }
}

int64_t GoodsLedger::came() {
    return s_books.came;
}

int64_t GoodsLedger::went() {
    return s_books.went;
}

int64_t GoodsLedger::here() {
    return s_books.came - s_books.went;
}

int64_t GoodsLedger::came_by(const std::string &verb) {
    return sum(s_books.came_by, verb);
}

int64_t GoodsLedger::went_by(const std::string &verb) {
    return sum(s_books.went_by, verb);
}

GoodsLedger::Faults GoodsLedger::take_faults() {
    Faults faults;
    faults.came = told(s_books.faults_came);
    faults.went = told(s_books.faults_went);
    return faults;
}

} // namespace tilm
