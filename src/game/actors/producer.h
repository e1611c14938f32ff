#pragma once
// A building that makes goods: coop, barn, pond, pen, hives, orchard, sheep shed, coffee farm. Put together by build().

#include <memory>

#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/variant/array.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>

#include "farm_fields/producer_core.h"
#include "farm_items/zone_core.h"
#include "glebworks/live_ref.h"
#include "rules/producers.h"

namespace tilm {

class FarmHand;
class ProducerAnimals;

class Producer : public ProducerCore {
    GDCLASS(Producer, ProducerCore)

public:
    Producer();
    ~Producer() override;

    // Makes the building of a plan entry (id, product, region, pos) at level 1. Add it to the tree at once after: it
    // then hands its zones and solids to the farm. Null for an unknown product or without a place, with one log line.
    static Producer *build(const Dictionary &entry);
    // The free feed of a new building, for its first goods; returns the items given (0 for kinds without feed). The
    // caller keeps who has had it.
    int give_start_feed();

    int animal_count() const;
    int visible_animals() const;
    double interval() const;
    // Ground rectangles (Rect2, world) that walkers go round.
    Array solids() const;
    String feed_kind() const;
    bool _eat();
    bool _bought_feed() const;
    bool _feed_late() const;
    void _buy_feed();
    bool services_ready() const;
    bool sicken_hunger();
    double overwork();
    void lose_level();
    void set_level(int l);
    int get_level() const { return level; }
    void animate(double dt) override;
    void regrow_tick(double dt) override;
    void made();
    void deliver_catch(const Vector3 &from);
    void splash(const Vector3 &at, bool big);
    Dictionary hold_animal(const Vector3 &near, double sec);
    void shear(const Dictionary &d);

    Array get_animals() const; // of Dictionary, see ProducerAnimals
    Ref<ZoneCore> get_take_zone() const { return take_zone; }
    Ref<ZoneCore> get_feed_zone() const { return feed_zone; }
    FarmHand *get_hand() const { return hand.get(); }
    const rules::ProducerKind *kind_row() const { return row; }
    // Word for what a new level brings, such as "CHICKENS".
    String animals_word() const;

    TM_FIELD(String, product, String())
    TM_FIELD(String, id, String())
    TM_FIELD(String, region, String("eggs"))

    void _ready() override;

protected:
    static void _bind_methods();

private:
    void assemble();
    PileCore *build_tray();
    void build_trough();
    void build_hand();
    void show_level();
    void spawn_on_tray(const Vector3 &from, double flight);

    const rules::ProducerKind *row = nullptr;
    int level = 1;
    double label_t = 0;
    LiveRef<FarmHand> hand;
    bool told_no_trough = false;
    Label3D *level_label = nullptr;
    Ref<ZoneCore> take_zone;
    Ref<ZoneCore> feed_zone;
    std::unique_ptr<ProducerAnimals> animals; // from _ready on
};

} // namespace tilm
