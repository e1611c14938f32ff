#pragma once

#include <godot_cpp/variant/plane.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace godot {

class Variant;

struct AABB {
    Vector3 position;
    Vector3 size;

    constexpr AABB() = default;
    constexpr AABB(const Vector3 &pos, const Vector3 &p_size) : position(pos), size(p_size) {}

    const Vector3 &get_position() const { return position; }
    void set_position(const Vector3 &v) { position = v; }
    const Vector3 &get_size() const { return size; }
    void set_size(const Vector3 &v) { size = v; }
    Vector3 get_end() const { return position + size; }
    void set_end(const Vector3 &v) { size = v - position; }
    Vector3 get_center() const { return position + size * 0.5f; }
    real_t get_volume() const { return size.x * size.y * size.z; }
    bool has_volume() const { return size.x > 0 && size.y > 0 && size.z > 0; }
    bool has_surface() const { return size.x > 0 || size.y > 0 || size.z > 0; }

    AABB abs() const { return AABB(position + size.minf(0), size.abs()); }
    bool has_point(const Vector3 &p) const {
        const Vector3 end = get_end();
        return p.x >= position.x && p.y >= position.y && p.z >= position.z && p.x <= end.x && p.y <= end.y &&
               p.z <= end.z;
    }
    bool intersects(const AABB &b) const {
        const Vector3 e = get_end(), be = b.get_end();
        return position.x < be.x && e.x > b.position.x && position.y < be.y && e.y > b.position.y &&
               position.z < be.z && e.z > b.position.z;
    }
    bool encloses(const AABB &b) const {
        const Vector3 e = get_end(), be = b.get_end();
        return position.x <= b.position.x && e.x >= be.x && position.y <= b.position.y && e.y >= be.y &&
               position.z <= b.position.z && e.z >= be.z;
    }
    AABB merge(const AABB &b) const {
        AABB r = *this;
        r.merge_with(b);
        return r;
    }
    void merge_with(const AABB &b) {
        const Vector3 from = position.min(b.position);
        size = get_end().max(b.get_end()) - from;
        position = from;
    }
    AABB intersection(const AABB &b) const {
        const Vector3 from = position.max(b.position);
        const Vector3 to = get_end().min(b.get_end());
        return intersects(b) ? AABB(from, to - from) : AABB();
    }
    AABB expand(const Vector3 &v) const {
        AABB r = *this;
        r.expand_to(v);
        return r;
    }
    void expand_to(const Vector3 &v) {
        const Vector3 from = position.min(v);
        size = get_end().max(v) - from;
        position = from;
    }
    AABB grow(real_t by) const { return AABB(position - Vector3(by, by, by), size + Vector3(by * 2, by * 2, by * 2)); }
    void grow_by(real_t by) { *this = grow(by); }
    Vector3 get_support(const Vector3 &d) const {
        return position + Vector3(d.x > 0 ? size.x : 0, d.y > 0 ? size.y : 0, d.z > 0 ? size.z : 0);
    }
    Vector3 get_endpoint(int i) const {
        return position + Vector3(i & 4 ? size.x : 0, i & 2 ? size.y : 0, i & 1 ? size.z : 0);
    }
    int get_longest_axis_index() const { return size.max_axis_index(); }
    int get_shortest_axis_index() const { return size.min_axis_index(); }
    real_t get_longest_axis_size() const { return MAX(size.x, MAX(size.y, size.z)); }
    real_t get_shortest_axis_size() const { return MIN(size.x, MIN(size.y, size.z)); }
    bool intersects_plane(const Plane &plane) const;
    Variant intersects_ray_bind(const Vector3 &from, const Vector3 &dir) const;
    Variant intersects_segment_bind(const Vector3 &from, const Vector3 &to) const;

    bool is_equal_approx(const AABB &b) const {
        return position.is_equal_approx(b.position) && size.is_equal_approx(b.size);
    }
    bool is_finite() const { return position.is_finite() && size.is_finite(); }
    constexpr bool operator==(const AABB &b) const { return position == b.position && size == b.size; }
    constexpr bool operator!=(const AABB &b) const { return !(*this == b); }

    operator String() const;
};

} // namespace godot
