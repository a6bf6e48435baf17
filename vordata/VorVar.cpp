#include "VorVar.h"

VorVar::VorVar()
    : m_type(VT_EMPTY)
    , m_number(0.0)
{
}

VorVar::VorVar(const char* text)
    : m_type(VT_TEXT)
    , m_text(text ? text : "")
    , m_number(0.0)
{
}

VorVar::VorVar(int value)
    : m_type(VT_INT)
    , m_number(static_cast<double>(value))
{
}

VorVar::VorVar(double value)
    : m_type(VT_DOUBLE)
    , m_number(value)
{
}

VorVar::VorVar(const VorVar& other) = default;

VorVar& VorVar::operator=(const VorVar& other) = default;

VorVar::~VorVar() = default;

const char* VorVar::S() const
{
    // m_text is empty unless the variant holds a text.
    return m_text.c_str();
}

int VorVar::I() const
{
    switch (m_type) {
    case VT_INT:
        return static_cast<int>(m_number);
    case VT_DOUBLE: {
        // Truncate towards zero, saturating where the value does not fit an int.
        const double v = m_number;
        if (!(v == v))
            return 0;
        if (v >= 2147483647.0)
            return 2147483647;
        if (v <= -2147483648.0)
            return -2147483647 - 1;
        return static_cast<int>(v);
    }
    default:
        return 0;
    }
}

double VorVar::D() const
{
    return (m_type == VT_INT || m_type == VT_DOUBLE) ? m_number : 0.0;
}

int VorVar::ValType() const
{
    return m_type;
}
