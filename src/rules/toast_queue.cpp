#include "rules/toast_queue.h"

#include <algorithm>
#include <array>

namespace tilm::rules {
namespace {

constexpr std::array<std::string_view, 12> refusals = {
    "NOT ENOUGH MONEY",
    "NOT AVAILABLE",
    "NOT ENOUGH GOLDEN EGGS",
    "LOCKED: BUY THE LAND FIRST",
    "NO ROOM HERE",
    "NO FREE LOT",
    "ALREADY SOLD",
    "STACK IS FULL",
    "CAN'T BUILD HERE",
    "CAN'T DO THAT NOW",
    "ONLY THE HOST CAN DO THAT",
    "SAVING FAILED",
};

} // namespace

double toast_seconds(size_t characters, int level) {
    return std::min(4.0, 2.0 + 0.04 * static_cast<double>(characters)) + (level >= 3 ? 1.0 : 0.0);
}

bool is_refusal(std::string_view text) {
    return text.starts_with("NEEDS ") || std::find(refusals.begin(), refusals.end(), text) != refusals.end();
}

void ToastQueue::set_limits(int room_, int waiting) {
    room = std::max(room_, 1);
    limit = static_cast<size_t>(std::max(waiting, 1));
}

bool ToastQueue::is_waiting(std::string_view text) const {
    return std::any_of(queue.begin(), queue.end(), [&](const Waiting &w) { return w.text == text; });
}

ToastQueue::Change ToastQueue::add(const std::string &text, int level, size_t characters) {
    for (Toast &toast : shown) {
        if (toast.text == text && !toast.out) {
            ++toast.count;
            toast.left = toast_seconds(characters, level);
            return Change::counted;
        }
    }
    if (is_waiting(text)) {
        return Change::dropped;
    }
    if (static_cast<int>(shown.size()) < room) {
        show({text, level, characters});
        return Change::shown;
    }
    if (queue.size() >= limit) {
        const auto plain = std::find_if(queue.begin(), queue.end(), [](const Waiting &w) { return w.level == 0; });
        if (plain != queue.end()) {
            queue.erase(plain);
        } else if (level == 0) {
            return Change::dropped;
        } else {
            queue.pop_front();
        }
    }
    queue.push_back({text, level, characters});
    return Change::queued;
}

void ToastQueue::show(const Waiting &toast) {
    shown.push_back({next_id++, toast.text, toast.level, 1, toast_seconds(toast.characters, toast.level), false});
}

std::vector<int> ToastQueue::step(double delta) {
    std::vector<int> over;
    for (Toast &toast : shown) {
        if (toast.out) {
            continue;
        }
        toast.left -= delta;
        if (toast.left <= 0.0) {
            toast.out = true;
            over.push_back(toast.id);
        }
    }
    return over;
}

bool ToastQueue::gone(int id) {
    std::erase_if(shown, [&](const Toast &toast) { return toast.id == id; });
    if (queue.empty() || static_cast<int>(shown.size()) >= room) {
        return false;
    }
    show(queue.front());
    queue.pop_front();
    return true;
}

} // namespace tilm::rules
