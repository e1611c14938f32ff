#pragma once
// The room of friends as lower rooms see it: whether friends are here, and how to tell them something. Net implements
// it.

#include <cstdint>

#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class Session {
public:
    virtual ~Session() = default;

    static Session *current() { return slot(); }
    static void set_current(Session *session) { slot() = session; }

    virtual bool in_session() const = 0;
    virtual void post_activity(const String &text, int type) = 0; // 0 upgrade, 1 built, 2 new land
    virtual void sold(const String &kind, int64_t n) = 0;
    // Whether a reward of playing together, such as "statue", is the farm's.
    virtual bool reward_earned(const String & /*key*/) const { return false; }

private:
    static Session *&slot() {
        static Session *session = nullptr;
        return session;
    }
};

} // namespace tilm
