#pragma once
// Process-wide values of engine types must be dropped before the engine is: owners register how, the last resident
// node runs it.

#include <vector>

namespace tilm {

class Statics {
public:
    using Release = void (*)();

    static void on_release(Release fn) { list().push_back(fn); }

    // Runs all releases once, last registered first. Owners stay usable and simply start over empty.
    static void release_all() {
        std::vector<Release> &fns = list();
        for (auto it = fns.rbegin(); it != fns.rend(); ++it) {
            (*it)();
        }
    }

private:
    static std::vector<Release> &list() {
        static std::vector<Release> fns;
        return fns;
    }
};

} // namespace tilm
