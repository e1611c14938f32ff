#include "game/shell/pet_house.h"

#include <algorithm>

#include "game/actors/pet.h"
#include "game/actors/player.h"
#include "game/shell/world.h"
#include "rules/pets.h"
#include "safe_read.h"

namespace tilm {

Array PetHouse::names_of(const Array &from) {
    Array out;
    for (int64_t i = 0; i < from.size(); ++i) {
        const Variant &v = from[i];
        if (v.get_type() != Variant::STRING && v.get_type() != Variant::STRING_NAME) {
            WARN_PRINT("TILMARCH pets: an entry is not a name, dropped");
        } else if (const String kind = v; !out.has(kind)) {
            out.push_back(kind);
        }
    }
    return out;
}

void PetHouse::load(const Dictionary &doc) {
    home = names_of(read_list(doc, "pets_home"));
    horse_lv = std::clamp<int64_t>(read_whole(doc, "horse_lv", 1), 1, rules::horse_level_max);
    cart_lv = std::clamp<int64_t>(read_whole(doc, "cart_lv"), 0, static_cast<int64_t>(rules::carts().size()));
    set_owned(read_list(doc, "pets"));
}

void PetHouse::store(Dictionary &doc) const {
    doc["pets"] = get_owned();
    doc["pets_home"] = get_home();
    doc["horse_lv"] = horse_lv;
    doc["cart_lv"] = cart_lv;
}

Pet *PetHouse::find(const String &kind) const {
    for (const LiveRef<Pet> &pet : pets) {
        if (pet && pet.get()->get_kind() == kind) {
            return pet.get();
        }
    }
    return nullptr;
}

void PetHouse::set_owned(const Array &kinds) {
    owned = names_of(kinds);
    for (size_t i = pets.size(); i-- > 0;) {
        Pet *pet = pets[i].get();
        if (pet != nullptr && owned.has(pet->get_kind())) {
            continue;
        }
        if (pet != nullptr) {
            world.remove_child(pet);
            pet->queue_free();
        }
        pets.erase(pets.begin() + static_cast<std::ptrdiff_t>(i));
    }
    spawn_missing();
}

void PetHouse::spawn_missing() {
    for (int64_t i = 0; i < owned.size(); ++i) {
        const String kind = owned[i];
        if (find(kind) != nullptr) {
            continue;
        }
        if (rules::find_pet(kind.utf8().get_data()) == nullptr) {
            WARN_PRINT("TILMARCH unknown pet " + kind.left(40) + ": kept, not shown");
            continue;
        }
        Pet *pet = memnew(Pet);
        pet->setup(kind, &world, world.farmer());
        world.add_child(pet);
        pet->place();
        pets.emplace_back(pet);
    }
    dress_horse();
}

void PetHouse::dress_horse() {
    if (Pet *horse = find("horse")) {
        horse->set_gear(horse_lv, cart_lv);
    }
}

void PetHouse::set_home(const Array &kinds) {
    home = names_of(kinds);
    dress_horse(); // what it carries counts, or stops counting, at once
}

void PetHouse::set_horse_lv(int64_t lv) {
    horse_lv = std::clamp<int64_t>(lv, 1, rules::horse_level_max);
    dress_horse();
}

void PetHouse::set_cart_lv(int64_t lv) {
    cart_lv = std::clamp<int64_t>(lv, 0, static_cast<int64_t>(rules::carts().size()));
    dress_horse();
}

void PetHouse::settle() {
    for (const LiveRef<Pet> &pet : pets) {
        if (pet) {
            pet.get()->place();
        }
    }
}

} // namespace tilm
