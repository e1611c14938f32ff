#include "game/art/art_materials.h"

#include <godot_cpp/classes/resource_loader.hpp>
#include <godot_cpp/classes/shader.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/art/art_state.h"
#include "game/art/models.h"
#include "names.h"

namespace tilm {
namespace {

// Good enough for anything: paint from the vertices, the engine's own light.
const char *const SAFE_SHADER = "shader_type spatial;\n"
                                "void fragment() { ALBEDO = COLOR.rgb; ROUGHNESS = 1.0; }\n";

Ref<ShaderMaterial> new_material(const String &name) {
    const String path = String("res://shaders/") + name + String(".gdshader");
    Ref<Shader> shader;
    if (ResourceLoader::get_singleton()->exists(path)) {
        shader = ResourceLoader::get_singleton()->load(path);
    }
    if (shader.is_null()) {
        UtilityFunctions::print("TILMARCH shader missing: ", path);
        shader.instantiate();
        shader->set_code(SAFE_SHADER);
    }
    Ref<ShaderMaterial> material;
    material.instantiate();
    material->set_shader(shader);
    return material;
}

} // namespace

Ref<ShaderMaterial> Models::shader_material(const String &name) {
    Ref<ShaderMaterial> material = art().shaders.get(name, Variant());
    if (material.is_null()) {
        material = new_material(name);
        art().shaders[name] = material;
    }
    return material;
}

Ref<ShaderMaterial> Models::farm_material(bool snowy) {
    if (!snowy) {
        return shader_material(art_shader::FARM);
    }
    if (art().farm_snowy.is_null()) {
        Ref<ShaderMaterial> material;
        material.instantiate();
        material->set_shader(shader_material(art_shader::FARM)->get_shader());
        material->set_shader_parameter(TM_NAME("snowy"), 1.0);
        art().farm_snowy = material;
    }
    return art().farm_snowy;
}

Ref<ShaderMaterial> Models::tree_material() {
    return shader_material(art_shader::TREE);
}

Ref<ShaderMaterial> Models::person_material() {
    return shader_material(art_shader::PERSON);
}

Ref<ShaderMaterial> Models::animal_material() {
    return shader_material(art_shader::ANIMAL);
}

Ref<StandardMaterial3D> Models::vertex_material() {
    if (art().vertex_material.is_null()) {
        Ref<StandardMaterial3D> material;
        material.instantiate();
        material->set_flag(BaseMaterial3D::FLAG_ALBEDO_FROM_VERTEX_COLOR, true);
        material->set_flag(BaseMaterial3D::FLAG_SRGB_VERTEX_COLOR, true);
        material->set_roughness(0.85f);
        art().vertex_material = material;
    }
    return art().vertex_material;
}

Ref<StandardMaterial3D> Models::color_material(const Color &color, float roughness, bool unshaded) {
    const String key = vformat("%s_%s_%s", color.to_html(true), roughness, unshaded);
    Ref<StandardMaterial3D> material = art().materials.get(key, Variant());
    if (material.is_null()) {
        material.instantiate();
        material->set_albedo(color);
        material->set_roughness(roughness);
        if (color.a < 1.0f) {
            material->set_transparency(BaseMaterial3D::TRANSPARENCY_ALPHA);
        }
        if (unshaded) {
            material->set_shading_mode(BaseMaterial3D::SHADING_MODE_UNSHADED);
        }
        art().materials[key] = material;
    }
    return material;
}

} // namespace tilm
