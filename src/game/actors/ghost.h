#pragma once
// The picture of a remote player: walks where its samples say and shows what the player's record tells. The record
// comes over the wire and is believed in nothing.

#include <vector>

#include <godot_cpp/classes/label3d.hpp>

#include "game/actors/walker.h"
#include "glebworks/live_ref.h"
#include "rules/ghost_path.h"

namespace tilm {
using namespace godot;

class Pet;

class Ghost : public Walker {
    GDCLASS(Ghost, Walker)

public:
    void _ready() override;
    void _process(double dt) override;
    void _notification(int what);

    // The member record: av, o, cap, pets, hl, cl, horse, c. Keys of a wrong type read as absent.
    void set_info(const Dictionary &m);
    // Kind -> count of the known goods in a carry text.
    Dictionary parse_carry(const String &text) const;

    // Position samples by their times, in seconds; one that is not newer than the last, or not finite, is left out.
    void add_sample(double t, const Vector2 &pos, double heading, const Vector2 &vel);
    // Moves towards where the samples say that it is at `now`.
    void follow(double now, double dt);
    int64_t sample_count() const { return static_cast<int64_t>(samples.size()); }
    void show_name(const String &text);
    // Nothing was heard of the player for a while.
    void set_stale(bool on);
    Array get_pets() const; // the pets now walking with it

protected:
    static void _bind_methods();

private:
    void wear(const String &outfit, const String &avatar);
    void keep_pets(const std::vector<String> &kinds, int64_t horse_lv, int64_t cart_lv);
    void reconcile(const String &text);

    std::vector<rules::GhostSample> samples;
    std::vector<LiveRef<Pet>> pets;
    String worn_outfit, worn_avatar;
    String carried; // the text that the stack shows
    bool dressed = false;
    Label3D *plate = nullptr;
};

} // namespace tilm
