#pragma once
// The caches behind the model pipeline, process-wide, dropped before the engine goes.

#include <godot_cpp/classes/font.hpp>
#include <godot_cpp/classes/plane_mesh.hpp>
#include <godot_cpp/classes/shader_material.hpp>
#include <godot_cpp/classes/standard_material3d.hpp>
#include <godot_cpp/variant/dictionary.hpp>

namespace tilm {
using namespace godot;

struct ArtState {
    Dictionary prims;     // shape key -> surface arrays
    Dictionary materials; // colour key -> StandardMaterial3D
    Dictionary baked;     // model key -> ArrayMesh
    Dictionary rigs;      // rig key -> ArrayMesh with limb channels
    Dictionary bones;     // rig key -> rows of the joints that it leaves (model_rigs)
    Dictionary shaders;   // shader name -> ShaderMaterial
    Ref<StandardMaterial3D> vertex_material;
    Ref<ShaderMaterial> farm_snowy;
    Ref<ShaderMaterial> ground;
    Ref<PlaneMesh> glow_plane;
    Ref<Font> font;
    bool prims_loaded = false;
    bool low_detail = false;
};

// Made on first use; starts over empty after its release.
ArtState &art();
void release_art();

} // namespace tilm
