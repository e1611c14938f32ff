#pragma once

#include <godot_cpp/variant/variant.hpp>
