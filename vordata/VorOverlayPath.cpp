#include "VorOverlayPath.h"

#include <cstddef>

VorOverlayPath::VorOverlayPath() = default;

// The spare overlay handed out for out-of-range indexes is not part of the
// value, so it is not copied.
VorOverlayPath::VorOverlayPath(const VorOverlayPath& other)
    : m_overlays(other.m_overlays)
{
}

VorOverlayPath& VorOverlayPath::operator=(const VorOverlayPath& other)
{
    if (this != &other)
        m_overlays = other.m_overlays;
    return *this;
}

VorOverlayPath::~VorOverlayPath() = default;

int VorOverlayPath::Length() const
{
    return static_cast<int>(m_overlays.size());
}

void VorOverlayPath::Append(const VorOverlay& overlay)
{
    m_overlays.push_back(overlay);
}

void VorOverlayPath::Clear()
{
    m_overlays.clear();
}

VorOverlay& VorOverlayPath::operator[](int index)
{
    if (index < 0 || index >= Length()) {
        m_outside = VorOverlay();
        return m_outside;
    }
    return m_overlays[static_cast<std::size_t>(index)];
}

VorOverlay VorOverlayPath::operator[](int index) const
{
    if (index < 0 || index >= Length())
        return VorOverlay();
    return m_overlays[static_cast<std::size_t>(index)];
}
