#pragma once

#include <godot_cpp/variant/rect2.hpp>

namespace godot {

struct Rect2i {
    Point2i position;
    Size2i size;

    constexpr Rect2i() = default;
    constexpr Rect2i(int32_t x, int32_t y, int32_t width, int32_t height) : position(x, y), size(width, height) {}
    constexpr Rect2i(const Point2i &pos, const Size2i &p_size) : position(pos), size(p_size) {}

    const Vector2i &get_position() const { return position; }
    const Vector2i &get_size() const { return size; }
    Vector2i get_end() const { return position + size; }
    Vector2i get_center() const { return position + size / 2; }
    int32_t get_area() const { return size.width * size.height; }
    bool has_area() const { return size.x > 0 && size.y > 0; }
    bool has_point(const Point2i &p) const {
        return p.x >= position.x && p.y >= position.y && p.x < position.x + size.x && p.y < position.y + size.y;
    }
    bool intersects(const Rect2i &r) const {
        return position.x < r.position.x + r.size.width && position.x + size.width > r.position.x &&
               position.y < r.position.y + r.size.height && position.y + size.height > r.position.y;
    }
    bool encloses(const Rect2i &r) const {
        return r.position.x >= position.x && r.position.y >= position.y &&
               r.position.x + r.size.x <= position.x + size.x && r.position.y + r.size.y <= position.y + size.y;
    }
    Rect2i intersection(const Rect2i &r) const {
        if (!intersects(r)) {
            return Rect2i();
        }
        const Vector2i from = position.max(r.position);
        return Rect2i(from, get_end().min(r.get_end()) - from);
    }
    Rect2i merge(const Rect2i &r) const {
        const Vector2i from = position.min(r.position);
        return Rect2i(from, get_end().max(r.get_end()) - from);
    }
    Rect2i grow(int32_t by) const {
        return Rect2i(position.x - by, position.y - by, size.width + by * 2, size.height + by * 2);
    }
    Rect2i abs() const { return Rect2i(position + size.mini(0), size.abs()); }

    constexpr bool operator==(const Rect2i &r) const { return position == r.position && size == r.size; }
    constexpr bool operator!=(const Rect2i &r) const { return !(*this == r); }

    operator String() const;
    constexpr operator Rect2() const { return Rect2(position, size); }
};

inline Rect2::operator Rect2i() const {
    return Rect2i(position, size);
}

} // namespace godot
