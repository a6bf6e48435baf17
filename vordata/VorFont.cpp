#include "VorFont.h"

VorFont::VorFont()
    : VorVar("")
    , size(12)
    , weight(50)
    , bold(0)
    , italic(0)
    , underline(0)
    , strikeOut(0)
{
}

VorFont::VorFont(const char* family, int pointSize)
    : VorVar(family)
    , size(pointSize)
    , weight(50)
    , bold(0)
    , italic(0)
    , underline(0)
    , strikeOut(0)
{
}

VorFont::~VorFont() = default;

VorFont& VorFont::operator=(const VorFont& other)
{
    VorVar::operator=(other);
    size = other.size;
    weight = other.weight;
    bold = other.bold;
    italic = other.italic;
    underline = other.underline;
    strikeOut = other.strikeOut;
    return *this;
}
