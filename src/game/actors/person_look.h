#pragma once
// How people are dressed by their job, and how a full model (one with knees and elbows) walks.

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

struct PersonLook {
    // Role: farmer, worker, feed, loader, seller, machine. Skin: hexadecimal colour, empty for one at random.
    static Dictionary of_role(const String &role, const String &skin = String());
    // The role of a carrier by where it carries to.
    static String hauler_role(const String &dst);
    static String random_staff_skin();
    static Array staff_skin_list();
    static Array customer_looks(); // all that random_customer picks from
    // One of a fixed set of outfits, made once; a VIP's are purple.
    static Dictionary random_customer(bool vip);

    static bool has_joints(Node3D *model); // a full model, to be posed by pose_full
    // Walk cycle of a full model: phase in radians, s01 the share of full speed 0..1.
    static void pose_full(Node3D *model, double phase, double s01, bool carrying);

    static void setup_statics();
};

} // namespace tilm
