#include "datainterface.h"

#include "VorImage.h"

bool IsValidVorImage(VorImage* image)
{
    if (!image)
        return false;
    return image->Width() != 0 && image->Height() != 0;
}

DrawMode FromROIType(int code)
{
    switch (code) {
    case 0: return DM_RECT1;
    case 1: return DM_CIRCLE;
    case 2: return DM_ANNULAR;
    case 4: return DM_POLYGON;
    case 5: return DM_ANYLINE;
    case 6: return DM_RECT2;
    case 7: return DM_LINE;
    case 8: return DM_ELLIPSE;
    case 9: return DM_ARC;
    case 10: return DM_POINT;
    case 11: return DM_MASK;
    default: return DM_SELECT; // 3 is a ROI of no kind
    }
}

DrawMode FromOverlayType(int code)
{
    switch (code) {
    case 1: return DM_POINT;
    case 2: return DM_ARROWLINE;
    case 3: return DM_LINE;
    case 4: return DM_RECT1;
    case 5: return DM_RECT1; // with search lines; the overlay's own type tells them apart
    case 6: return DM_CIRCLE;
    case 7: return DM_ELLIPSE;
    case 8: return DM_POLYGON;
    case 9: return DM_ANYCLOSELINE;
    case 10: return DM_RECT2;
    case 11: return DM_RECT2;
    case 12: return DM_ANNULAR;
    case 13: return DM_ANNULAR;
    case 14: return DM_ARC;
    case 15: return DM_ANYLINE;
    default: return DM_SELECT; // text (16) and region (19) are handled by their raw codes
    }
}
