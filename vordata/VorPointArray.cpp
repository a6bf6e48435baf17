#include "VorPointArray.h"

#include <cstddef>

VorPointArray::VorPointArray() = default;

VorPointArray::~VorPointArray() = default;

void VorPointArray::Clear()
{
    m_points.clear();
}

void VorPointArray::Append(const VorPoint& point)
{
    m_points.push_back(point);
}

int VorPointArray::Length() const
{
    return static_cast<int>(m_points.size());
}

VorPoint& VorPointArray::operator[](int index)
{
    if (index < 0 || index >= Length()) {
        m_outside = VorPoint();
        return m_outside;
    }
    return m_points[static_cast<std::size_t>(index)];
}

const VorPoint& VorPointArray::operator[](int index) const
{
    if (index < 0 || index >= Length()) {
        m_outside = VorPoint();
        return m_outside;
    }
    return m_points[static_cast<std::size_t>(index)];
}

bool VorPointArray::operator==(const VorPointArray& other) const
{
    return m_points == other.m_points;
}
