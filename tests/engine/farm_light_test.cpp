#include <godot_cpp/classes/directional_light3d.hpp>
#include <godot_cpp/classes/environment.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/world_environment.hpp>

#include "engine_test.h"
#include "game/art/farm_light.h"
#include "game/art/farmhouse_model.h"
#include "game/art/models.h"
#include "game/art/scenery.h"

namespace tilm {
namespace {

struct Noon {
    Node3D *light = Scenery::light(stage());
    DirectionalLight3D *sun() { return Object::cast_to<DirectionalLight3D>(light->get_node_or_null(NodePath("Sun"))); }
    Environment *air() {
        return Object::cast_to<WorldEnvironment>(light->get_node_or_null(NodePath("Env")))->get_environment().ptr();
    }
    double sun_power() { return sun()->get_param(Light3D::PARAM_ENERGY); }
    ~Noon() { FarmLight::apply(light, rules::SkyState()); }
};

TEST(FarmLightTest, StartsAtASpringNoonAndKeepsTheHourWhenShadowsChange) {
    Noon farm;
    EXPECT_NEAR(farm.sun()->get_rotation_degrees().x, -50, 1e-3);
    EXPECT_NEAR(farm.sun()->get_rotation_degrees().y, -40, 1e-3);
    EXPECT_NEAR(farm.sun_power(), 0.36, 1e-5);
    EXPECT_EQ(farm.air()->get_fog_light_color(), Color(0.80f, 0.91f, 0.96f));
    FarmLight::apply(farm.light, 23, 3, 0, 0);
    const double shadowed = farm.sun_power();
    EXPECT_LT(shadowed, 0.2);
    EXPECT_LT(farm.air()->get_fog_light_color().r, 0.3);
    Scenery::tune_light(farm.light, false);
    EXPECT_NEAR(farm.sun_power(), shadowed * 0.92 / 0.36, 1e-5);
    EXPECT_NEAR(farm.air()->get_ambient_light_energy(), 1.55 * 0.97, 1e-5);
    EXPECT_EQ(FarmLight::current().season[3], 1);
}

TEST(FarmLightTest, GroundsChangeShaderAtHalfWetness) {
    Noon farm;
    const Ref<ShaderMaterial> own = Scenery::ground_material();
    const Ref<ShaderMaterial> sand = Scenery::dry_ground_material(Color::html("e0c07c"), 1);
    const Ref<Shader> dry = Models::shader_material("ground")->get_shader();
    const Ref<Shader> wet = Models::shader_material("ground_wet")->get_shader();
    ASSERT_NE(dry, wet);
    FarmLight::apply(farm.light, 12, 0, 0.5f, 0);
    EXPECT_EQ(own->get_shader(), dry);
    FarmLight::apply(farm.light, 12, 0, 0.51f, 0);
    EXPECT_EQ(own->get_shader(), wet);
    EXPECT_EQ(sand->get_shader(), wet);
    EXPECT_EQ(static_cast<double>(sand->get_shader_parameter("dry_amount")), 1);
    FarmLight::apply(farm.light, 12, 0, 0.2f, 0);
    EXPECT_EQ(own->get_shader(), dry);
    EXPECT_EQ(sand->get_shader(), dry);
}

TEST(FarmLightTest, LampsAreLitByNightOnly) {
    Noon farm;
    Node3D *pool = Scenery::glow_pool(2);
    stage()->add_child(pool);
    EXPECT_FALSE(pool->is_visible());
    FarmLight::apply(farm.light, 22, 0, 0, 0);
    EXPECT_TRUE(pool->is_visible());
    Node3D *late = Scenery::glow_pool(2);
    stage()->add_child(late);
    EXPECT_TRUE(late->is_visible());
    FarmLight::apply(farm.light, 9, 0, 0, 0);
    EXPECT_FALSE(pool->is_visible());
    EXPECT_FALSE(late->is_visible());
}

TEST(FarmLightTest, ALightWithoutASunIsRefused) {
    Noon farm;
    Node3D *empty = add<Node3D>();
    expect_engine_error("TILMARCH no sun and sky");
    FarmLight::apply(empty, 22, 0, 0, 0);
}

TEST(FarmLightTest, TheHouseGrowsInPlaceAndTheYardIsFewDraws) {
    Noon farm;
    Node3D *house = Scenery::farmhouse(0);
    stage()->add_child(house);
    const AABB small = Object::cast_to<MeshInstance3D>(house)->get_aabb();
    EXPECT_LT(small.get_end().x + 10, 12.6); // inside the egg farm's fence, but for the eaves
    Scenery::set_farmhouse_stage(house, 3);
    EXPECT_GT(Object::cast_to<MeshInstance3D>(house)->get_aabb().get_end().x, small.get_end().x + 1);
    Node3D *yard = Scenery::homestead();
    stage()->add_child(yard);
    EXPECT_LE(yard->find_children("*", "GeometryInstance3D", true, false).size(), 3);
    Node3D *water = Scenery::lake(Vector2(5, 3));
    stage()->add_child(water);
    const Ref<ShaderMaterial> paint = Object::cast_to<MeshInstance3D>(water)->get_material_override();
    EXPECT_EQ(static_cast<Vector2>(paint->get_shader_parameter("half_size")), Vector2(5, 3));
}

} // namespace
} // namespace tilm
