#pragma once
// The staff's working day as walkers see it: who is on a break now. The schedule implements it; without one everybody
// is always on duty.

namespace tilm {

class Walker;

class Workday {
public:
    virtual ~Workday() = default;

    static Workday *current() { return slot(); }
    static void set_current(Workday *day) { slot() = day; }

    // One step of `dt` seconds for a numbered member of the staff. True: it is on a break.
    virtual bool staff_step(Walker *walker, double dt) = 0;

private:
    static Workday *&slot() {
        static Workday *day = nullptr;
        return day;
    }
};

} // namespace tilm
