#pragma once
// Accessors of bound fields: one line declares a field with its get_/set_ pair, one line in _bind_methods publishes
// both and the property of the same name.

#include <godot_cpp/core/class_db.hpp>

#define TM_FIELD(m_type, m_name, m_default)                                                                            \
    m_type m_name = m_default;                                                                                         \
    void set_##m_name(const m_type &v) {                                                                               \
        m_name = v;                                                                                                    \
    }                                                                                                                  \
    m_type get_##m_name() const {                                                                                      \
        return m_name;                                                                                                 \
    }

// Publishes set_<name>, get_<name> and the property <name>; use inside _bind_methods().
#define TM_BIND_FIELD(m_class, m_variant_type, m_name)                                                                 \
    ::godot::ClassDB::bind_method(::godot::D_METHOD("set_" #m_name, "v"), &m_class::set_##m_name);                     \
    ::godot::ClassDB::bind_method(::godot::D_METHOD("get_" #m_name), &m_class::get_##m_name);                          \
    ADD_PROPERTY(::godot::PropertyInfo(m_variant_type, #m_name), "set_" #m_name, "get_" #m_name)
