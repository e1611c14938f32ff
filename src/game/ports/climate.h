#pragma once
// The season and the weather as lower rooms see them. The sky implements it; without one it is a dry spring.

namespace tilm {

class Climate {
public:
    virtual ~Climate() = default;

    static Climate *current() { return slot(); }
    static void set_current(Climate *climate) { slot() = climate; }

    virtual int season_index() const = 0; // 0..3 from spring
    virtual bool rain_falls() const = 0;  // rain or storm

    static int season_now() { return current() == nullptr ? 0 : current()->season_index(); }
    static bool wet_now() { return current() != nullptr && current()->rain_falls(); }

private:
    static Climate *&slot() {
        static Climate *climate = nullptr;
        return climate;
    }
};

} // namespace tilm
