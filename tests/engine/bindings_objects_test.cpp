// Our layer over the engine's interface: objects, classes, calls from outside, signals, callables.

#include <gtest/gtest.h>

#include <random>

#include <godot_cpp/classes/box_mesh.hpp>
#include <godot_cpp/classes/class_db_singleton.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/ref_counted.hpp>
#include <godot_cpp/classes/standard_material3d.hpp>
#include <godot_cpp/classes/translation.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/callable_custom.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "engine_test.h"

namespace tilm {
namespace {

class Greeter { // a plain interface beside the engine's classes
public:
    virtual ~Greeter() = default;
    virtual int greet() const = 0;
};

int alive = 0;
std::vector<std::string> told;

class ProbeBase : public Node3D {
    GDCLASS(ProbeBase, Node3D)

public:
    enum Mood : int { CALM = 1, CROSS = 7 };

    ProbeBase() { ++alive; }
    ~ProbeBase() override { --alive; }

    int64_t add(int64_t a, int64_t b) const { return int64_t(uint64_t(a) + uint64_t(b)); } // wraps
    String join(const String &a, const StringName &b, double c) { return a + String(b) + String::num(c); }
    int64_t faces(const Ref<BoxMesh> &mesh) const { return mesh.is_valid() ? 1 : 0; }
    String name_of(Node3D *node) const { return node ? String(node->get_name()) : String("none"); }
    ProbeBase *self() { return this; }
    Ref<BoxMesh> make_mesh() const {
        Ref<BoxMesh> mesh;
        mesh.instantiate();
        return mesh;
    }
    double total(const PackedFloat64Array &list, bool negative) const {
        double sum = 0;
        for (double d : list) {
            sum += d;
        }
        return negative ? -sum : sum;
    }
    int64_t measure(const Array &a, const Dictionary &d, const Vector3 &v, const Callable &c) {
        return a.size() + d.size() + int64_t(v.x) + (c.is_valid() ? 1 : 0);
    }
    void set_mood(Mood m) { mood = m; }
    Mood get_mood() const { return mood; }
    Variant echo(const Variant &v) const { return v; }
    static int64_t twice(int64_t x) { return 2 * x; }
    int64_t count_all(const Variant **args, GDExtensionInt n, GDExtensionCallError &error) {
        error.error = n > 3 ? GDEXTENSION_CALL_ERROR_TOO_MANY_ARGUMENTS : GDEXTENSION_CALL_OK;
        error.argument = 3;
        return n > 0 && args[0] ? n : 0;
    }

    void _ready() override { told.push_back("base ready"); }

    Mood mood = CALM;
    Dictionary extra;

protected:
    static void _bind_methods() {
        ClassDB::bind_method(D_METHOD("add", "a", "b"), &ProbeBase::add, DEFVAL(40));
        ClassDB::bind_method(D_METHOD("join", "a", "b", "c"), &ProbeBase::join, DEFVAL("mid"), DEFVAL(1.5));
        ClassDB::bind_method(D_METHOD("faces", "mesh"), &ProbeBase::faces);
        ClassDB::bind_method(D_METHOD("name_of", "node"), &ProbeBase::name_of);
        ClassDB::bind_method(D_METHOD("self"), &ProbeBase::self);
        ClassDB::bind_method(D_METHOD("make_mesh"), &ProbeBase::make_mesh);
        ClassDB::bind_method(D_METHOD("total", "list", "negative"), &ProbeBase::total, DEFVAL(false));
        ClassDB::bind_method(D_METHOD("measure", "a", "d", "v", "c"), &ProbeBase::measure);
        ClassDB::bind_method(D_METHOD("set_mood", "m"), &ProbeBase::set_mood);
        ClassDB::bind_method(D_METHOD("get_mood"), &ProbeBase::get_mood);
        ClassDB::bind_method(D_METHOD("echo", "v"), &ProbeBase::echo);
        ClassDB::bind_static_method("ProbeBase", D_METHOD("twice", "x"), &ProbeBase::twice);
        ClassDB::bind_vararg_method(METHOD_FLAGS_DEFAULT, "count_all", &ProbeBase::count_all, MethodInfo("count_all"));
        ADD_PROPERTY(PropertyInfo(Variant::INT, "mood"), "set_mood", "get_mood");
        ADD_SIGNAL(MethodInfo("rang", PropertyInfo(Variant::INT, "times"), PropertyInfo(Variant::STRING, "by")));
        BIND_ENUM_CONSTANT(CALM);
        BIND_ENUM_CONSTANT(CROSS);
    }
    void _notification(int what) {
        if (what == NOTIFICATION_ENTER_TREE || what == NOTIFICATION_PREDELETE) {
            told.push_back(what == NOTIFICATION_PREDELETE ? "base dies" : "base enters");
        }
    }
    bool _set(const StringName &name, const Variant &value) {
        if (String(name).begins_with("extra_")) {
            extra[name] = value;
            return true;
        }
        return false;
    }
    bool _get(const StringName &name, Variant &value) const {
        const Variant *found = extra.getptr(name);
        if (found) {
            value = *found;
        }
        return found != nullptr;
    }
    void _get_property_list(List<PropertyInfo> *list) const {
        list->push_back(PropertyInfo(Variant::INT, "extra_known"));
    }
    String _to_string() const { return "probe!"; }
};

class ProbeChild : public ProbeBase, public Greeter {
    GDCLASS(ProbeChild, ProbeBase)

public:
    int greet() const override { return 42; }
    void hear(int64_t times, const String &by) { heard += String::num_int64(times) + by; }
    void _process(double delta) override {
        ++frames;
        seconds += delta;
    }
    String heard;
    int frames = 0;
    double seconds = 0;

protected:
    static void _bind_methods() { ClassDB::bind_method(D_METHOD("hear", "times", "by"), &ProbeChild::hear); }
    void _notification(int what) {
        if (what == NOTIFICATION_ENTER_TREE || what == NOTIFICATION_PREDELETE) {
            told.push_back(what == NOTIFICATION_PREDELETE ? "child dies" : "child enters");
        }
    }
};

class ProbeLang : public Translation {
    GDCLASS(ProbeLang, Translation)

public:
    StringName _get_message(const StringName &message, const StringName &context) const override {
        return String("<") + String(message) + ">" + String(context);
    }

protected:
    static void _bind_methods() {}
};

class ProbeAbstract : public RefCounted {
    GDCLASS(ProbeAbstract, RefCounted)

public:
    virtual int64_t pure() const = 0;

protected:
    static void _bind_methods() { ClassDB::bind_method(D_METHOD("pure"), &ProbeAbstract::pure); }
};

class ProbeCounted : public ProbeAbstract {
    GDCLASS(ProbeCounted, ProbeAbstract)

public:
    ProbeCounted() { ++alive; }
    ~ProbeCounted() override { --alive; }
    int64_t pure() const override { return 5; }

protected:
    static void _bind_methods() {}
};

const test::RegisterClasses probes([] {
    GDREGISTER_CLASS(ProbeBase);
    ClassDB::register_class<ProbeChild>(false, true, false);
    GDREGISTER_CLASS(ProbeLang);
    GDREGISTER_ABSTRACT_CLASS(ProbeAbstract);
    GDREGISTER_CLASS(ProbeCounted);
});

class BindingsObjects : public ::testing::Test {
protected:
    void SetUp() override { told.clear(); }
};

// The outcome of a call from outside.
template <typename... Args>
GDExtensionCallErrorType outcome(Object *object, const char *method, const Args &...args) {
    const Variant values[] = {Variant(args)..., Variant()};
    const Variant *list[sizeof...(Args) + 1];
    for (size_t i = 0; i < sizeof...(Args); ++i) {
        list[i] = &values[i];
    }
    Variant ret;
    GDExtensionCallError error{};
    Variant(object).callp(method, list, sizeof...(Args), ret, error);
    return error.error;
}

TEST_F(BindingsObjects, ObjectsDieOnceAndLeaveNoWrapperBehind) {
    const int before = alive;
    ProbeChild *made = memnew(ProbeChild);
    const uint64_t id = made->get_instance_id();
    EXPECT_EQ(alive, before + 1);
    EXPECT_EQ(ObjectDB::get_instance(id), made);
    EXPECT_EQ(String(made->get_class()), "ProbeChild");
    memdelete(made);
    EXPECT_EQ(alive, before);
    EXPECT_EQ(ObjectDB::get_instance(id), nullptr);

    // Made by the engine, freed with its parent, by queue_free and by the name "free".
    Object *named = ClassDB::instantiate("ProbeChild");
    ASSERT_NE(Object::cast_to<ProbeChild>(named), nullptr);
    Node3D *parent = add<Node3D>();
    parent->add_child(Object::cast_to<Node>(named));
    parent->queue_free();
    ProbeBase *other = memnew(ProbeBase);
    EXPECT_EQ(alive, before + 2);
    other->call("free");
    step();
    EXPECT_EQ(alive, before);
}

TEST_F(BindingsObjects, ReferencesAreCounted) {
    const int before = alive;
    {
        Ref<ProbeCounted> a(memnew(ProbeCounted));
        EXPECT_EQ(a->get_reference_count(), 1);
        Ref<ProbeAbstract> b = a; // to a base
        Variant v = b;
        Array list = Array::make(v);
        EXPECT_EQ(a->get_reference_count(), 4);
        Ref<ProbeCounted> c = list[0]; // and back
        EXPECT_EQ(c, a);
        EXPECT_EQ(c->pure(), 5);
        Ref<BoxMesh> wrong = list[0];
        EXPECT_TRUE(wrong.is_null());
        list.clear();
        v = Variant();
        b.unref();
        c = nullptr;
        EXPECT_EQ(a->get_reference_count(), 1);
        Ref<ProbeCounted> moved = std::move(a);
        EXPECT_EQ(moved->get_reference_count(), 1);
        Object *self = moved.ptr();
        EXPECT_EQ(Variant(self).operator Object *(), self);
    }
    EXPECT_EQ(alive, before);

    // Through the engine: a resource held by a node, a returned reference, an object made by name.
    Ref<StandardMaterial3D> material;
    material.instantiate();
    Ref<BoxMesh> mesh;
    mesh.instantiate();
    mesh->set_material(material);
    EXPECT_EQ(material->get_reference_count(), 2);
    Ref<Material> back = mesh->get_material();
    EXPECT_EQ(back.ptr(), material.ptr());
    EXPECT_EQ(material->get_reference_count(), 3);
    { Variant made = ClassDB::instantiate("ProbeCounted"); }
    EXPECT_EQ(alive, before);
    EXPECT_FALSE(ClassDB::can_instantiate("ProbeAbstract"));
}

TEST_F(BindingsObjects, EngineObjectsAreWrappedByTheirNearestKnownClass) {
    Object *body = ClassDB::instantiate("Marker3D"); // a class without a wrapper of its own
    Node3D *node = Object::cast_to<Node3D>(body);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(String(node->get_class()), "Marker3D");
    EXPECT_EQ(Object::cast_to<MeshInstance3D>(body), nullptr);
    stage()->add_child(node);
    EXPECT_EQ(stage()->get_child(0), node) << "one engine object has one wrapper";
    node->set_name("Mark");
    EXPECT_EQ(stage()->get_node<Node3D>(NodePath("Mark")), node);

    // Interfaces go by the C++ type.
    ProbeChild *child = add<ProbeChild>();
    Object *plain = child;
    Greeter *greeter = Object::cast_to<Greeter>(plain);
    ASSERT_NE(greeter, nullptr);
    EXPECT_EQ(greeter->greet(), 42);
    EXPECT_EQ(dynamic_cast<Greeter *>(static_cast<Object *>(node)), nullptr);
    EXPECT_EQ(Object::cast_to<ProbeChild>(static_cast<Object *>(nullptr)), nullptr);
}

TEST_F(BindingsObjects, VirtualsAndNotificationsRunThroughTheClassesInOrder) {
    ProbeChild *child = add<ProbeChild>();
    EXPECT_EQ(told, (std::vector<std::string>{"base enters", "child enters", "base ready"}));
    step();
    child->frames = 0;
    child->seconds = 0;
    step(3);
    EXPECT_EQ(child->frames, 3);
    EXPECT_NEAR(child->seconds, 3.0 / 60, 1e-9);
    told.clear();
    stage()->remove_child(child);
    memdelete(child);
    EXPECT_EQ(told, (std::vector<std::string>{"child dies", "base dies"}));

    Ref<ProbeLang> lang;
    lang.instantiate();
    EXPECT_EQ(String(lang->get_message("hay", "c")), "<hay>c") << "a virtual that returns a value";
    // What nobody overrides is not reported: the engine does not process the node.
    ProbeBase *base = add<ProbeBase>();
    EXPECT_FALSE(base->is_processing());
    EXPECT_FALSE(base->is_processing_input());
}

TEST_F(BindingsObjects, BoundMethodsServeScriptsOfDerivedClassesToo) {
    ProbeChild *p = add<ProbeChild>();
    p->set_name("Bob");
    EXPECT_EQ(int(p->call("add", 1, 2)), 3);
    EXPECT_EQ(int(p->call("add", 2)), 42) << "a default";
    EXPECT_EQ(String(p->call("join", "a")), "amid1.5");
    EXPECT_EQ(String(p->call("join", StringName("x"), "y", 2.5)), "xy2.5");
    EXPECT_EQ(String(p->call("name_of", p)), "Bob");
    EXPECT_EQ(String(p->call("name_of", nullptr)), "none");
    EXPECT_EQ(p->call("self").operator Object *(), p);
    Ref<BoxMesh> mesh = p->call("make_mesh");
    ASSERT_TRUE(mesh.is_valid());
    EXPECT_EQ(mesh->get_reference_count(), 1);
    EXPECT_EQ(int(p->call("faces", mesh)), 1);
    EXPECT_EQ(double(p->call("total", PackedFloat64Array({1, 2.5}))), 3.5);
    EXPECT_EQ(double(p->call("total", Array::make(1, 2), true)), -3.0) << "an array becomes a packed one";
    EXPECT_EQ(
        int(p->call("measure", Array::make(1), Dictionary(), Vector3(3, 0, 0), callable_mp(p, &ProbeChild::hear))), 5);
    EXPECT_EQ(int(ClassDBSingleton::get_singleton()->class_call_static("ProbeBase", "twice", 21)), 42);
    EXPECT_EQ(int(p->call("count_all", 1, 2)), 2);
    EXPECT_EQ(outcome(p, "count_all", 1, 2, 3, 4), GDEXTENSION_CALL_ERROR_TOO_MANY_ARGUMENTS);
    EXPECT_EQ(ClassDB::get_method("ProbeChild", "add")->get_argument_count(), 2);

    p->set("mood", ProbeBase::CROSS);
    EXPECT_EQ(p->mood, ProbeBase::CROSS);
    EXPECT_EQ(int(p->get("mood")), 7);
    p->set("extra_known", 11);
    EXPECT_EQ(int(p->get("extra_known")), 11);
    EXPECT_EQ(p->get("extra_other"), Variant());
    EXPECT_EQ(Variant(p).stringify(), "probe!");
    bool listed = false;
    for (const Variant &property : Array(p->get_property_list())) {
        listed = listed || Dictionary(property)["name"] == Variant("extra_known");
    }
    EXPECT_TRUE(listed);
    EXPECT_EQ(ClassDBSingleton::get_singleton()->class_get_integer_constant("ProbeBase", "CROSS"), 7);
}

TEST_F(BindingsObjects, AScriptOnAnObjectComesBeforeItsBoundMethods) {
    ProbeChild *p = add<ProbeChild>();
    EXPECT_EQ(int(p->call("add", 1, 2)), 3);
    Ref<RefCounted> script = ClassDB::instantiate("GDScript");
    script->call("set_source_code",
                 "extends ProbeChild\n@warning_ignore(\"native_method_override\")\n"
                 "func add(a, _b = 0):\n\treturn -a\nfunc only_here():\n\treturn call(\"add\", 4)\n");
    ASSERT_EQ(int(script->call("reload")), OK);
    p->set_script(script);
    EXPECT_EQ(int(p->call("add", 7, 2)), -7);
    EXPECT_EQ(int(p->call("only_here")), -4);
    EXPECT_EQ(int(p->call("measure", Array(), Dictionary(), Vector3(), Callable())), 0);
    p->set_script(Variant());
    EXPECT_EQ(int(p->call("add", 1, 2)), 3);
}

TEST_F(BindingsObjects, CallsThatDoNotFitAreRefused) {
    ProbeBase *p = add<ProbeBase>();
    Ref<ProbeCounted> counted(memnew(ProbeCounted));
    EXPECT_EQ(outcome(p, "add"), GDEXTENSION_CALL_ERROR_TOO_FEW_ARGUMENTS);
    EXPECT_EQ(outcome(p, "add", 1, 2, 3), GDEXTENSION_CALL_ERROR_TOO_MANY_ARGUMENTS);
    EXPECT_EQ(outcome(p, "self", 1), GDEXTENSION_CALL_ERROR_TOO_MANY_ARGUMENTS);
    EXPECT_EQ(outcome(p, "nothing_such"), GDEXTENSION_CALL_ERROR_INVALID_METHOD);
    for (const Variant &wrong : Array::make(Variant(), "1", Vector3(), Array(), counted)) {
        EXPECT_EQ(outcome(p, "add", wrong, 1), GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT) << wrong.stringify();
    }
    EXPECT_EQ(outcome(p, "add", 1.9, true), GDEXTENSION_CALL_OK) << "numbers convert";
    EXPECT_EQ(outcome(p, "measure", Array(), Array(), Vector3(), Callable()), GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT);
    EXPECT_EQ(outcome(p, "total", PackedStringArray()), GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT);

    // Objects of another class, and objects that are gone.
    EXPECT_EQ(outcome(p, "name_of", counted), GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT);
    EXPECT_EQ(outcome(p, "faces", counted), GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT);
    EXPECT_EQ(outcome(p, "faces", p), GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT);
    ProbeBase *gone = memnew(ProbeBase);
    const Variant dead = gone;
    memdelete(gone);
    EXPECT_EQ(dead.operator Object *(), nullptr);
    EXPECT_EQ(outcome(p, "name_of", dead), GDEXTENSION_CALL_ERROR_INVALID_ARGUMENT);
    EXPECT_EQ(outcome(p, "echo", dead), GDEXTENSION_CALL_OK);
}

TEST_F(BindingsObjects, AnyArgumentsAtAllAreSurvived) {
    ProbeChild *p = add<ProbeChild>();
    ProbeBase *gone = memnew(ProbeBase);
    const Variant dead = gone;
    memdelete(gone);
    const Array pool =
        Array::make(Variant(), true, int64_t(-1), INT64_MAX, 1e300, Math::NaN, "text", StringName("name"),
                    NodePath("a/b"), Vector2(1, 2), Vector3(1, 2, 3), Transform3D(), Color(1, 0, 0), RID(), p, dead,
                    memnew(RefCounted), Callable(), Signal(p, "rang"), Dictionary(), Array::make(1, "x"),
                    PackedByteArray({1}), PackedFloat64Array({2}), PackedStringArray({"s"}), Projection());
    const char *methods[] = {"add",     "join",     "faces",    "name_of", "self", "make_mesh", "total",
                             "measure", "set_mood", "get_mood", "echo",    "hear", "count_all"};
    std::mt19937 random(7);
    int fitted = 0, refused = 0;
    for (int round = 0; round < 20000; ++round) {
        const Variant *args[6];
        const int count = int(random() % 6);
        for (int i = 0; i < count; ++i) {
            args[i] = &pool[int64_t(random() % uint64_t(pool.size()))];
        }
        Variant ret;
        GDExtensionCallError error{};
        Variant(p).callp(methods[random() % std::size(methods)], args, count, ret, error);
        ++(error.error == GDEXTENSION_CALL_OK ? fitted : refused);
    }
    EXPECT_GT(fitted, 500);
    EXPECT_GT(refused, 5000);
    EXPECT_EQ(int(p->call("add", 1, 1)), 2);
}

TEST_F(BindingsObjects, SignalsReachMethodsAndCallablesCompare) {
    ProbeChild *a = add<ProbeChild>();
    ProbeChild *b = add<ProbeChild>();
    const Callable direct = callable_mp(b, &ProbeChild::hear);
    EXPECT_EQ(direct, callable_mp(b, &ProbeChild::hear));
    EXPECT_NE(direct, callable_mp(a, &ProbeChild::hear));
    EXPECT_EQ(direct.get_object(), b);
    EXPECT_EQ(direct.get_argument_count(), 2);
    EXPECT_EQ(a->connect("rang", direct), OK);
    EXPECT_TRUE(a->is_connected("rang", callable_mp(b, &ProbeChild::hear)));
    a->emit_signal("rang", 3, "Ann");
    EXPECT_EQ(b->heard, "3Ann");
    a->disconnect("rang", callable_mp(b, &ProbeChild::hear));
    a->emit_signal("rang", 3, "Ann");
    EXPECT_EQ(b->heard, "3Ann");

    a->connect("rang", Callable(b, "hear")); // by name
    Signal(a, "rang").emit(4, "Eve");
    EXPECT_EQ(b->heard, "3Ann4Eve");
    direct.bind("late").call_deferred(9);
    EXPECT_EQ(b->heard, "3Ann4Eve");
    step();
    EXPECT_EQ(b->heard, "3Ann4Eve9late");
    EXPECT_EQ(int(callable_mp_static(&ProbeBase::twice).call(4)), 8);
    EXPECT_EQ(int(Callable(a, "add").call(4, 5)), 9);

    // A listener that is gone hears nothing and harms nobody; one that gets too little refuses.
    a->connect("rang", direct);
    memdelete(b);
    EXPECT_FALSE(direct.is_valid());
    a->emit_signal("rang", 1, "x");
    expect_engine_error("Error calling from signal 'rang'");
    a->connect("rang", callable_mp(a, &ProbeChild::hear));
    a->emit_signal("rang", "no number", "x");
    EXPECT_EQ(a->heard, "");
}

class Summer : public CallableCustom {
public:
    explicit Summer(int *p_freed) : freed(p_freed) {}
    ~Summer() override { ++*freed; }
    uint32_t hash() const override { return 1; }
    String get_as_text() const override { return "summer"; }
    CompareEqualFunc get_compare_equal_func() const override {
        return [](const CallableCustom *a, const CallableCustom *b) { return a == b; };
    }
    CompareLessFunc get_compare_less_func() const override {
        return [](const CallableCustom *a, const CallableCustom *b) { return a < b; };
    }
    ObjectID get_object() const override { return ObjectID(); }
    void call(const Variant **args, int count, Variant &ret, GDExtensionCallError &error) const override {
        int64_t sum = 0;
        for (int i = 0; i < count; ++i) {
            sum += int64_t(*args[i]);
        }
        ret = sum;
        error.error = GDEXTENSION_CALL_OK;
    }

private:
    int *freed;
};

TEST_F(BindingsObjects, CustomCallablesAreOwnedByTheirCallables) {
    int freed = 0;
    {
        const Callable sum(memnew(Summer(&freed)));
        EXPECT_EQ(int(sum.call(1, 2, 3)), 6);
        EXPECT_EQ(int(sum.callv(Array::make(4, 5))), 9);
        const Variant held = sum;
        EXPECT_EQ(int(Array::make(1, 2).map(Callable(held))[1]), 2);
        EXPECT_NE(sum.get_custom(), nullptr);
        EXPECT_EQ(freed, 0);
    }
    EXPECT_EQ(freed, 1);
}

TEST_F(BindingsObjects, AFailedCallByNameSaysSo) {
    ProbeBase *p = add<ProbeBase>();
    expect_engine_error("call('add') on ProbeBase failed: an argument of a wrong type");
    EXPECT_EQ(p->call("add", "x", 1), Variant());
    expect_engine_error("call('no_such') on ProbeBase failed: no such method");
    p->call("no_such");
}

} // namespace
} // namespace tilm
