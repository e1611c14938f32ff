#pragma once
// See class_db.hpp, which brings the parts in their order.

#include <godot_cpp/core/class_db.hpp>
