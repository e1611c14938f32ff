#pragma once

#include <godot_cpp/variant/vector2.hpp>

namespace godot {

struct Rect2i;

struct Rect2 {
    Point2 position;
    Size2 size;

    constexpr Rect2() = default;
    constexpr Rect2(real_t x, real_t y, real_t width, real_t height) : position(x, y), size(width, height) {}
    constexpr Rect2(const Point2 &pos, const Size2 &p_size) : position(pos), size(p_size) {}

    const Vector2 &get_position() const { return position; }
    void set_position(const Vector2 &v) { position = v; }
    const Vector2 &get_size() const { return size; }
    void set_size(const Vector2 &v) { size = v; }
    Vector2 get_end() const { return position + size; }
    void set_end(const Vector2 &v) { size = v - position; }
    Vector2 get_center() const { return position + size * 0.5f; }
    real_t get_area() const { return size.width * size.height; }
    bool has_area() const { return size.x > 0 && size.y > 0; }

    bool has_point(const Point2 &p) const {
        return p.x >= position.x && p.y >= position.y && p.x < position.x + size.x && p.y < position.y + size.y;
    }
    bool intersects(const Rect2 &r, bool include_borders = false) const {
        if (include_borders) {
            return position.x <= r.position.x + r.size.width && position.x + size.width >= r.position.x &&
                   position.y <= r.position.y + r.size.height && position.y + size.height >= r.position.y;
        }
        return position.x < r.position.x + r.size.width && position.x + size.width > r.position.x &&
               position.y < r.position.y + r.size.height && position.y + size.height > r.position.y;
    }
    bool encloses(const Rect2 &r) const {
        return r.position.x >= position.x && r.position.y >= position.y &&
               r.position.x + r.size.x <= position.x + size.x && r.position.y + r.size.y <= position.y + size.y;
    }
    Rect2 intersection(const Rect2 &r) const {
        if (!intersects(r)) {
            return Rect2();
        }
        const Vector2 from = position.max(r.position);
        return Rect2(from, get_end().min(r.get_end()) - from);
    }
    Rect2 merge(const Rect2 &r) const {
        const Vector2 from = position.min(r.position);
        return Rect2(from, get_end().max(r.get_end()) - from);
    }
    Rect2 grow(real_t by) const {
        return Rect2(position.x - by, position.y - by, size.width + by * 2, size.height + by * 2);
    }
    Rect2 grow_individual(real_t left, real_t top, real_t right, real_t bottom) const {
        return Rect2(position.x - left, position.y - top, size.width + left + right, size.height + top + bottom);
    }
    void grow_by(real_t by) { *this = grow(by); }
    Rect2 expand(const Vector2 &v) const {
        Rect2 r = *this;
        r.expand_to(v);
        return r;
    }
    void expand_to(const Vector2 &v) {
        const Vector2 begin = position.min(v);
        size = get_end().max(v) - begin;
        position = begin;
    }
    Rect2 abs() const { return Rect2(position + size.minf(0), size.abs()); }
    Vector2 get_support(const Vector2 &d) const {
        return Vector2(d.x > 0 ? position.x + size.x : position.x, d.y > 0 ? position.y + size.y : position.y);
    }
    real_t distance_to(const Vector2 &p) const {
        const real_t dx = std::max({position.x - p.x, real_t(0), p.x - position.x - size.x});
        const real_t dy = std::max({position.y - p.y, real_t(0), p.y - position.y - size.y});
        return std::sqrt(dx * dx + dy * dy);
    }
    bool is_equal_approx(const Rect2 &r) const {
        return position.is_equal_approx(r.position) && size.is_equal_approx(r.size);
    }
    bool is_finite() const { return position.is_finite() && size.is_finite(); }

    constexpr bool operator==(const Rect2 &r) const { return position == r.position && size == r.size; }
    constexpr bool operator!=(const Rect2 &r) const { return !(*this == r); }

    operator String() const;
    operator Rect2i() const;
};

} // namespace godot

#include <godot_cpp/variant/rect2i.hpp>
