// Our layer over the engine's interface: texts, containers, variants, and maths that must agree with the engine's.

#include <gtest/gtest.h>

#include <random>

#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/variant/typed_array.hpp>
#include <godot_cpp/variant/typed_dictionary.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "engine_test.h"

namespace tilm {
namespace {

TEST(BindingsText, UnicodeComesThroughWhole) {
    const char *samples[] = {"", "plain", "مزرعة تلمارش", "🐔 egg 🥚", "naïve €5", "a\tb\n"};
    for (const char *text : samples) {
        const String s(text);
        EXPECT_STREQ(s.utf8().get_data(), text);
        EXPECT_EQ(s, String::utf8(text));
        EXPECT_EQ(s, String(StringName(text)));
        EXPECT_EQ(s, text);
        EXPECT_EQ(String(Variant(s)), s);
        EXPECT_EQ(String(s.utf32().get_data()), s);
        EXPECT_EQ(String(s.utf16().get_data()), s);
    }
    const String hen = U"🐔x";
    EXPECT_EQ(hen.length(), 2);
    EXPECT_EQ(hen.utf8().length(), 5);
    EXPECT_EQ(hen[0], U'🐔');
    EXPECT_EQ(hen.utf16().length(), 3);
    expect_engine_error("out of bounds", 2);
    EXPECT_EQ(hen[99], 0u);
    EXPECT_EQ(hen[-1], 0u);
}

TEST(BindingsText, StringsJoinCompareAndFormat) {
    String s = "ab";
    const String copy = s;
    s += "c";
    s += U'd';
    s = "<" + s + ">";
    EXPECT_EQ(s, "<abcd>");
    EXPECT_EQ(copy, "ab") << "a copy is its own";
    EXPECT_TRUE(String("a") < String("b") && String("a") < String("aa") && !(String("b") < String("aa")));
    EXPECT_NE(String("a"), "");
    EXPECT_TRUE(String().is_empty());
    EXPECT_EQ(vformat("%s has %d of %.1f", "Ann", 3, 2.5), "Ann has 3 of 2.5");
    EXPECT_EQ(String("%d%%") % Array::make(7), "7%");
    EXPECT_EQ(String("{a}-{b}").format(Dictionary({{"a", 1}, {"b", 2}})), "1-2");
    EXPECT_EQ(itos(-42), "-42");
    EXPECT_EQ(String::num_int64(255, 16), "ff");
    EXPECT_EQ(String(",").join(PackedStringArray({"x", "y"})), "x,y");
    const PackedStringArray parts = String("a:b::c").split(":");
    ASSERT_EQ(parts.size(), 4);
    EXPECT_EQ(parts[1], "b");
    EXPECT_EQ(parts[2], "");
    EXPECT_EQ(String("hello").substr(1, 3), "ell");
    EXPECT_EQ(String("12.5").to_float(), 12.5);
    EXPECT_EQ(StringName("same"), StringName(String("sa") + "me"));
    EXPECT_EQ(StringName("same").data_unique_pointer(), StringName("same").data_unique_pointer());
    EXPECT_EQ(StringName(""), StringName());
    EXPECT_EQ(NodePath("A/B:c").get_name_count(), 2);
    EXPECT_EQ(String(NodePath("A/B")), "A/B");
}

TEST(BindingsContainers, ArraysShareAndDictionariesReadWithoutAdding) {
    Array a = Array::make(1, "two", 3.0);
    const Array shared = a;
    a.push_back(Vector2(4, 4));
    EXPECT_EQ(shared.size(), 4);
    EXPECT_EQ(int(shared[0]) + int(double(shared[2])), 4);
    a[0] = 9;
    EXPECT_EQ(int(shared[0]), 9);
    int64_t seen = 0;
    for (const Variant &v : shared) {
        seen += v.get_type();
    }
    EXPECT_EQ(seen, Variant::INT + Variant::STRING + Variant::FLOAT + Variant::VECTOR2);
    for (const Variant &v : Array()) {
        FAIL() << v.stringify();
    }
    Array unmade;
    const Array also = unmade; // not yet made, but already shared
    unmade.push_back(1);
    EXPECT_EQ(also.size(), 1);
    Array taken = std::move(unmade);
    unmade.push_back(2); // usable after a move, as a fresh one
    EXPECT_EQ(taken.size(), 1);
    expect_engine_error("out of bounds", 2);
    EXPECT_EQ(shared[77], Variant());
    Array writable = shared;
    writable[-1] = 5;
    EXPECT_EQ(shared.size(), 4);

    Dictionary d = {{"egg", 5}, {2, "two"}};
    const Dictionary &read = d;
    EXPECT_EQ(read["missing"], Variant());
    EXPECT_EQ(d.size(), 2) << "reading adds nothing";
    EXPECT_EQ(read.getptr("missing"), nullptr);
    EXPECT_EQ(int(d.get("missing", 3)), 3);
    d["milk"] = 7;
    int64_t sum = 0;
    for (const Variant &key : d) {
        sum += int64_t(key.get_type() == Variant::STRING ? d[key] : Variant(0));
    }
    EXPECT_EQ(sum, 12);
    EXPECT_TRUE(d.has(StringName("egg"))) << "names and texts are one kind of key";
    EXPECT_EQ(Dictionary({{"a", 1}}), Dictionary({{"a", 1}}));
    Dictionary deep = d.duplicate(true);
    deep["egg"] = 0;
    EXPECT_EQ(int(d["egg"]), 5);

    TypedArray<int64_t> typed;
    typed.push_back(1);
    expect_engine_error("Attempted to push_back");
    expect_engine_error("typed.validate");
    typed.push_back("no");
    EXPECT_EQ(typed.size(), 1);
    TypedArray<Node3D> nodes;
    EXPECT_EQ(String(nodes.get_typed_class_name()), "Node3D");
    TypedDictionary<String, int64_t> prices;
    EXPECT_TRUE(prices.is_typed());
}

TEST(BindingsContainers, PackedArraysCopyOnWrite) {
    PackedVector3Array a = {Vector3(1, 2, 3), Vector3(4, 5, 6)};
    const PackedVector3Array copy = a;
    a.ptrw()[0].x = 100;
    a[1] = Vector3();
    EXPECT_EQ(copy[0], Vector3(1, 2, 3));
    EXPECT_EQ(copy[1].z, 6);
    EXPECT_EQ(a[0].x, 100);
    a.append_array(copy);
    EXPECT_EQ(a.size(), 4);
    real_t sum = 0;
    for (const Vector3 &v : copy) {
        sum += v.x;
    }
    EXPECT_EQ(sum, 5);
    EXPECT_EQ(PackedByteArray().ptr(), nullptr);
    const String text = "é!";
    EXPECT_EQ(text.to_utf8_buffer(), PackedByteArray({0xc3, 0xa9, '!'}));
    EXPECT_EQ(text.to_utf8_buffer().get_string_from_utf8(), text);
    PackedStringArray names = {"b", "a"};
    names.sort();
    EXPECT_EQ(names[0], "a");
    EXPECT_EQ(PackedInt32Array(Array::make(1, 2.7)), PackedInt32Array({1, 2}));
    EXPECT_EQ(Array(names).size(), 2);
    expect_engine_error("out of bounds", 2);
    EXPECT_EQ(copy[2], Vector3());
    a[-5] = Vector3(1, 1, 1);
}

TEST(BindingsVariant, EveryTypeComesBackAsItWent) {
    const Node3D *node = stage();
    const Array values = Array::make(
        true, int64_t(-5), 2.5, "s", Vector2(1, 2), Vector2i(1, 2), Rect2(1, 2, 3, 4), Rect2i(1, 2, 3, 4),
        Vector3(1, 2, 3), Vector3i(1, 2, 3), Transform2D(1, 2, 3, 4, 5, 6), Vector4(1, 2, 3, 4), Vector4i(1, 2, 3, 4),
        Plane(1, 0, 0, 4), Quaternion(0, 1, 0, 0), AABB(Vector3(1, 2, 3), Vector3(4, 5, 6)), Basis(Vector3(0, 1, 0), 1),
        Transform3D(Basis(), Vector3(7, 8, 9)), Projection(), Color(0.1f, 0.2f, 0.3f, 0.4f), StringName("n"),
        NodePath("a"), RID(), node, Callable(node, "get_name"), Signal(node, "ready"), Dictionary(), Array(),
        PackedByteArray({1}), PackedInt32Array({1}), PackedInt64Array({1}), PackedFloat32Array({1}),
        PackedFloat64Array({1}), PackedStringArray({"x"}), PackedVector2Array({Vector2(1, 1)}),
        PackedVector3Array({Vector3(1, 1, 1)}), PackedColorArray({Color(1, 1, 1)}),
        PackedVector4Array({Vector4(1, 1, 1, 1)}));
    ASSERT_EQ(values.size(), Variant::VARIANT_MAX - 1);
    // The engine's own serialiser reads every byte of what we wrote.
    for (int i = 0; i < values.size(); ++i) {
        const Variant &v = values[i];
        EXPECT_EQ(v.get_type(), i + 1) << v.stringify();
        EXPECT_EQ(Variant(v), v);
        EXPECT_TRUE(v.hash_compare(v));
        if (v.get_type() != Variant::RID && v.get_type() != Variant::OBJECT && v.get_type() != Variant::CALLABLE &&
            v.get_type() != Variant::SIGNAL) {
            EXPECT_EQ(UtilityFunctions::str_to_var(UtilityFunctions::var_to_str(v)), v) << v.stringify();
        }
    }
    EXPECT_EQ(Vector4(values[11]).w, 4);
    EXPECT_EQ(Basis(values[16]), Basis(Vector3(0, 1, 0), 1));
    EXPECT_EQ(Transform3D(values[17]).origin, Vector3(7, 8, 9));
    EXPECT_EQ(PackedVector4Array(values[37])[0].z, 1);
    EXPECT_EQ(Callable(values[24]).get_method(), StringName("get_name"));
}

TEST(BindingsVariant, ConvertsAndOperatesAsTheEngineDoes) {
    EXPECT_EQ(int(Variant(3.99)), 3);
    EXPECT_EQ(int64_t(Variant(1e300)), INT64_MAX);
    EXPECT_EQ(int64_t(Variant(Math::NaN)), 0);
    EXPECT_EQ(double(Variant(true)), 1.0);
    EXPECT_EQ(int(Variant("17")), 17);
    EXPECT_EQ(String(Variant(2)), "2");
    EXPECT_EQ(Vector3(Variant("no vector")), Vector3());
    EXPECT_TRUE(bool(Variant("x")) && !bool(Variant("")) && !bool(Variant()) && bool(Variant(0.5)));
    EXPECT_EQ(Variant(1), Variant(1.0));
    EXPECT_NE(Variant(1), Variant("1"));
    EXPECT_EQ(Variant("a"), Variant(StringName("a")));
    Variant sum;
    bool valid = false;
    Variant::evaluate(Variant::OP_ADD, Vector2(1, 2), Vector2(3, 4), sum, valid);
    EXPECT_TRUE(valid);
    EXPECT_EQ(Vector2(sum), Vector2(4, 6));
    Variant::evaluate(Variant::OP_ADD, 1, "x", sum, valid);
    EXPECT_FALSE(valid);
    Variant v = Dictionary({{"k", 1}});
    v.set("k", 2);
    EXPECT_EQ(int(v.get("k")), 2);
    EXPECT_EQ(int(Variant("abc").call("length")), 3);
    EXPECT_EQ(Variant(Vector3(1, 2, 3)).get("y"), Variant(2.0));
}

// --- Maths: many random values, each method of ours beside the engine's own.

std::mt19937 random_source(3);

real_t number(real_t from = -10, real_t to = 10) {
    return std::uniform_real_distribution<real_t>(from, to)(random_source);
}
Vector2 vec2() {
    return Vector2(number(), number());
}
Vector3 vec3() {
    return Vector3(number(), number(), number());
}
Basis rotation() {
    return Basis(vec3().normalized(), number());
}

// The values of a result, for comparing with a tolerance.
std::vector<double> numbers(const Variant &v) {
    std::vector<double> out;
    switch (v.get_type()) {
    case Variant::BOOL:
    case Variant::INT:
    case Variant::FLOAT:
        out.push_back(double(v));
        break;
    case Variant::TRANSFORM3D: {
        const Transform3D t = v;
        out = numbers(t.basis);
        for (double d : numbers(t.origin)) {
            out.push_back(d);
        }
        break;
    }
    default: {
        const PackedFloat64Array found =
            UtilityFunctions::var_to_str(v).get_slice("(", 1).get_slice(")", 0).split_floats(",");
        out.assign(found.begin(), found.end());
    }
    }
    return out;
}

::testing::AssertionResult close(const Variant &ours, const Variant &engine) {
    if (ours.get_type() != engine.get_type()) {
        return ::testing::AssertionFailure() << ours.stringify() << " is of another type than " << engine.stringify();
    }
    const std::vector<double> a = numbers(ours), b = numbers(engine);
    bool same = a.size() == b.size() && !a.empty();
    for (size_t i = 0; same && i < a.size(); ++i) {
        same = (std::isnan(a[i]) && std::isnan(b[i])) || std::abs(a[i] - b[i]) <= 2e-4 * std::max(1.0, std::abs(b[i]));
    }
    return same ? ::testing::AssertionSuccess()
                : ::testing::AssertionFailure() << ours.stringify() << " instead of " << engine.stringify();
}

template <typename... Args>
Variant engine(const Variant &self, const char *method, const Args &...args) {
    const Variant values[] = {Variant(args)..., Variant()};
    const Variant *list[sizeof...(Args) + 1];
    for (size_t i = 0; i < sizeof...(Args); ++i) {
        list[i] = &values[i];
    }
    Variant ret;
    GDExtensionCallError error{};
    Variant(self).callp(method, list, sizeof...(Args), ret, error);
    EXPECT_EQ(error.error, GDEXTENSION_CALL_OK) << method;
    return ret;
}

Variant operated(Variant::Operator op, const Variant &a, const Variant &b) {
    Variant ret;
    bool valid = false;
    Variant::evaluate(op, a, b, ret, valid);
    EXPECT_TRUE(valid);
    return ret;
}

#define SAME(self, method, ...)                                                                                        \
    EXPECT_TRUE(close(Variant((self).method(__VA_ARGS__)), engine(self, #method __VA_OPT__(, ) __VA_ARGS__))) << #method

TEST(BindingsMaths, VectorsAgreeWithTheEngine) {
    for (int round = 0; round < 200; ++round) {
        const Vector2 a = vec2(), b = vec2(), n2 = vec2().normalized();
        const Vector3 p = vec3(), q = vec3(), n3 = vec3().normalized();
        const real_t w = number(0, 1);
        SAME(a, length);
        SAME(a, angle_to, b);
        SAME(a, angle_to_point, b);
        SAME(a, rotated, w);
        SAME(a, slerp, b, w);
        SAME(a, bounce, n2);
        SAME(a, reflect, n2);
        SAME(a, slide, n2);
        SAME(a, project, b);
        SAME(a, posmodv, b);
        SAME(a, snapped, b);
        SAME(a, limit_length, w);
        SAME(a, move_toward, b, w);
        SAME(a, cubic_interpolate, b, n2, a, w);
        SAME(a, bezier_interpolate, b, n2, a, w);
        SAME(a, max_axis_index);
        SAME(p, normalized);
        SAME(p, cross, q);
        SAME(p, angle_to, q);
        SAME(p, signed_angle_to, q, n3);
        SAME(p, rotated, n3, w);
        SAME(p, slerp, q, w);
        SAME(p, bounce, n3);
        SAME(p, reflect, n3);
        SAME(p, posmod, w);
        SAME(p, outer, q);
        SAME(p, octahedron_encode);
        SAME(p, min_axis_index);
        SAME(p, max_axis_index);
        SAME(p, move_toward, q, w);
    }
}

TEST(BindingsMaths, TransformsAgreeWithTheEngine) {
    for (int round = 0; round < 200; ++round) {
        const Basis r = rotation();
        const Basis b = r.scaled(Vector3(number(0.5, 2), number(0.5, 2), number(0.5, 2)));
        const Transform3D t(b, vec3()), u(rotation(), vec3());
        const Vector3 v = vec3(), axis = vec3().normalized();
        const real_t w = number(0, 1);
        SAME(b, inverse);
        SAME(b, transposed);
        SAME(b, determinant);
        SAME(b, orthonormalized);
        SAME(b, get_scale);
        SAME(b, get_rotation_quaternion);
        SAME(r, get_euler);
        SAME(b, scaled, v);
        SAME(b, scaled_local, v);
        SAME(b, rotated, axis, w);
        SAME(r, slerp, u.basis, w);
        SAME(b, tdotx, v);
        for (int order = 0; order < 6; ++order) {
            EXPECT_TRUE(close(Basis::from_euler(v, EulerOrder(order)),
                              Variant::call_static(Variant::BASIS, "from_euler", v, order)));
        }
        EXPECT_TRUE(close(Basis::looking_at(v), Variant::call_static(Variant::BASIS, "looking_at", v)));
        EXPECT_TRUE(close(b * r, operated(Variant::OP_MULTIPLY, b, r)));
        EXPECT_TRUE(close(t * u, operated(Variant::OP_MULTIPLY, t, u)));
        EXPECT_TRUE(close(t.xform(v), operated(Variant::OP_MULTIPLY, t, v)));
        EXPECT_TRUE(close(u.xform_inv(v), operated(Variant::OP_MULTIPLY, v, u)));
        const AABB box(v, v.abs());
        EXPECT_TRUE(close(t.xform(box), operated(Variant::OP_MULTIPLY, t, box)));
        const Plane plane(axis, w);
        EXPECT_TRUE(close(u.xform(plane), operated(Variant::OP_MULTIPLY, u, plane)));
        SAME(u, inverse);
        SAME(t, affine_inverse);
        SAME(t, looking_at, v);
        SAME(t, looking_at, v, axis, true);
        SAME(t, interpolate_with, u, w);
        SAME(t, rotated, axis, w);
        SAME(t, rotated_local, axis, w);
        SAME(t, scaled, v);
        SAME(t, translated_local, v);

        const Quaternion q(axis, w * 3), s(vec3().normalized(), number());
        EXPECT_TRUE(close(q * s, operated(Variant::OP_MULTIPLY, q, s)));
        EXPECT_TRUE(close(q.xform(v), operated(Variant::OP_MULTIPLY, q, v)));
        EXPECT_TRUE(close(Basis(q), Basis(axis, w * 3)));
        SAME(q, slerp, s, w);
        SAME(q, slerpni, s, w);
        SAME(q, get_axis);
        SAME(q, get_angle);
        SAME(q, log);
        SAME(q, get_euler);
        EXPECT_TRUE(close(Quaternion::from_euler(v), Variant::call_static(Variant::QUATERNION, "from_euler", v)));

        const Transform2D m(number(), vec2()), k(number(), Vector2(2, 3), 0.2f, vec2());
        EXPECT_TRUE(close(m * k, operated(Variant::OP_MULTIPLY, m, k)));
        const Rect2 rect(vec2(), vec2().abs());
        EXPECT_TRUE(close(k.xform(rect), operated(Variant::OP_MULTIPLY, k, rect)));
        SAME(m, inverse);
        SAME(k, affine_inverse);
        SAME(k, get_scale);
        SAME(k, rotated, w);
        SAME(k, orthonormalized);
    }
    // Colinear directions still give a basis.
    expect_engine_error("colinear", 2);
    EXPECT_TRUE(close(Basis::looking_at(Vector3(0, 2, 0)),
                      Variant::call_static(Variant::BASIS, "looking_at", Vector3(0, 2, 0))));
}

TEST(BindingsMaths, BoxesAndColoursAgreeWithTheEngine) {
    for (int round = 0; round < 200; ++round) {
        const AABB a(vec3(), vec3().abs()), b(vec3(), vec3().abs());
        const Vector3 v = vec3();
        SAME(a, intersects, b);
        SAME(a, intersection, b);
        SAME(a, merge, b);
        SAME(a, expand, v);
        SAME(a, has_point, v);
        SAME(a, get_support, v);
        SAME(a, get_endpoint, 5);
        SAME(a, grow, 0.5f);
        SAME(a, get_longest_axis_index);
        const Plane plane(vec3().normalized(), number());
        SAME(a, intersects_plane, plane);
        SAME(plane, project, v);
        const Variant hit = plane.intersects_ray_bind(v, a.position),
                      theirs = engine(plane, "intersects_ray", v, a.position);
        EXPECT_TRUE(hit.get_type() == Variant::NIL ? theirs == Variant() : close(hit, theirs));
        const Rect2 r(vec2(), vec2().abs()), s(vec2(), vec2().abs());
        SAME(r, intersects, s);
        SAME(r, intersection, s);
        SAME(r, merge, s);
        SAME(r, expand, s.position);
        SAME(r, encloses, s);

        const Color c(number(0, 1), number(0, 1), number(0, 1), number(0, 1)), d(number(0, 1), 0.5f, 0.2f, 0.8f);
        SAME(c, blend, d);
        SAME(c, lightened, 0.3f);
        SAME(c, darkened, 0.3f);
        SAME(c, srgb_to_linear);
        SAME(c, linear_to_srgb);
        SAME(c, get_luminance);
        SAME(c, to_rgba32);
        SAME(c, to_rgba64);
        EXPECT_EQ(c.to_html(), String(engine(c, "to_html")));
        EXPECT_TRUE(close(c.get_h(), Variant(c).get("h")));
        EXPECT_TRUE(close(c.get_s(), Variant(c).get("s")));
        const real_t h = number(-2, 2);
        EXPECT_TRUE(close(Color::from_hsv(h, c.r, c.g), Variant::call_static(Variant::COLOR, "from_hsv", h, c.r, c.g)));
    }
    EXPECT_EQ(Color("#ff8000"), Color(1, 128 / 255.0f, 0));
    EXPECT_EQ(Color("tomato"), Color::named("tomato"));
    EXPECT_EQ(Color::html("0f08").to_rgba32(), 0x00ff0088u);
    EXPECT_EQ(Color::hex(0x11223344).to_html(), "11223344");
}

TEST(BindingsMaths, ScalarFunctionsAgreeWithTheEngine) {
    for (int round = 0; round < 300; ++round) {
        const double a = number(), b = number(), w = number(0, 1);
        EXPECT_NEAR(Math::fposmod(a, b), UtilityFunctions::fposmod(a, b), 1e-9);
        EXPECT_NEAR(Math::wrapf(a, -1.0, 3.0), UtilityFunctions::wrapf(a, -1, 3), 1e-9);
        EXPECT_EQ(Math::wrapi(int64_t(a * 3), -4, 9), UtilityFunctions::wrapi(int64_t(a * 3), -4, 9));
        EXPECT_EQ(Math::posmod(int64_t(a * 3), 7), UtilityFunctions::posmod(int64_t(a * 3), 7));
        EXPECT_NEAR(Math::lerp_angle(a, b, w), UtilityFunctions::lerp_angle(a, b, w), 1e-9);
        EXPECT_NEAR(Math::smoothstep(a, b, w), UtilityFunctions::smoothstep(a, b, w), 1e-9);
        EXPECT_NEAR(Math::move_toward(a, b, w), UtilityFunctions::move_toward(a, b, w), 1e-9);
        EXPECT_NEAR(Math::rotate_toward(a, b, w), UtilityFunctions::rotate_toward(a, b, w), 1e-9);
        EXPECT_NEAR(Math::snapped(a, 0.25), UtilityFunctions::snappedf(a, 0.25), 1e-9);
        EXPECT_NEAR(Math::pingpong(a, 3), UtilityFunctions::pingpong(a, 3), 1e-9);
        EXPECT_NEAR(Math::ease(w, b), UtilityFunctions::ease(w, b), 1e-9);
        EXPECT_NEAR(Math::remap(a, -10.0, 10.0, 0.0, b), UtilityFunctions::remap(a, -10, 10, 0, b), 1e-9);
        EXPECT_NEAR(Math::cubic_interpolate(a, b, 1, 2, w), UtilityFunctions::cubic_interpolate(a, b, 1, 2, w), 1e-9);
        EXPECT_NEAR(Math::linear_to_db(w + 0.1), UtilityFunctions::linear_to_db(w + 0.1), 1e-9);
        EXPECT_EQ(Math::step_decimals(w / 100), UtilityFunctions::step_decimals(w / 100));
    }
}

} // namespace
} // namespace tilm
