#pragma once
// Which toasts are shown, which wait and for how long: the rules of the toast lane, without any picture.

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace tilm::rules {

// Seconds that a toast of this text stays.
double toast_seconds(size_t characters, int level);
// Texts that refuse something: shown at level 3 with a sound.
bool is_refusal(std::string_view text);

class ToastQueue {
public:
    struct Toast {
        int id = 0;
        std::string text;
        int level = 0;
        int count = 1;
        double left = 0.0;
        bool out = false; // it is leaving
    };

    enum class Change { shown, counted, queued, dropped };

    // room: toasts that the lane may hold; waiting: length of the queue.
    void set_limits(int room, int waiting);
    // Adds a toast; level is raised to 3 for refusals by the caller.
    Change add(const std::string &text, int level, size_t characters);
    // Time passes; toasts that run out are marked out and listed once.
    std::vector<int> step(double delta);
    // A row has left the screen: frees its place. True when the next one came up from the queue.
    bool gone(int id);

    const std::vector<Toast> &lane() const { return shown; }
    size_t waiting() const { return queue.size(); }
    bool is_waiting(std::string_view text) const;

private:
    struct Waiting {
        std::string text;
        int level;
        size_t characters;
    };
    void show(const Waiting &toast);

    std::vector<Toast> shown;
    std::deque<Waiting> queue;
    int room = 3;
    size_t limit = 6;
    int next_id = 1;
};

} // namespace tilm::rules
