#pragma once

#include "VorVar.h"
#include "vordata_export.h"

// A font description. The base VorVar holds the family name; the fields after
// it are plain data in a fixed order, because the window copies a VorFont with
// the inline copy constructor below: the base first, then field by field.
class VORDATA_EXPORT VorFont : public VorVar
{
public:
    // Family "" (the toolkit's default), 12 points, normal weight (50), no flags.
    VorFont();
    explicit VorFont(const char* family, int pointSize = 12);
    ~VorFont();

    VorFont(const VorFont& other)
        : VorVar(other)
        , size(other.size)
        , weight(other.weight)
        , bold(other.bold)
        , italic(other.italic)
        , underline(other.underline)
        , strikeOut(other.strikeOut)
    {
    }
    VorFont& operator=(const VorFont& other);

    int size;                  // point size
    int weight;                // 0 .. 99, as QFont::Weight
    unsigned char bold;        // copied, read by nothing in the window
    unsigned char italic;      // non-zero for true
    unsigned char underline;   // non-zero for true
    unsigned char strikeOut;   // non-zero for true
};
