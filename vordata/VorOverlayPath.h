#pragma once

#include "VorOverlay.h"
#include "vordata_export.h"

#include <vector>

// An ordered list of overlays with value semantics.
class VORDATA_EXPORT VorOverlayPath
{
public:
    VorOverlayPath();
    VorOverlayPath(const VorOverlayPath& other);
    VorOverlayPath& operator=(const VorOverlayPath& other);
    ~VorOverlayPath();

    int Length() const;
    void Append(const VorOverlay& overlay);
    void Clear();

    // An index outside 0 .. Length() - 1 gives an overlay of no kind: the
    // writable form a spare overlay of this path, reset on every such access.
    VorOverlay& operator[](int index);
    // Returns a copy, as the window's overlay path drawing expects.
    VorOverlay operator[](int index) const;

private:
    std::vector<VorOverlay> m_overlays;
    VorOverlay m_outside;
};
