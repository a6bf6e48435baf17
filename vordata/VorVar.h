#pragma once

#include "vordata_export.h"

#include <string>

// A small variant. It holds a text (the case the window uses), a whole number or
// a real number. The text is kept as bytes: VorVar says nothing of their
// encoding, and S() gives back exactly the bytes that went in.
class VORDATA_EXPORT VorVar
{
public:
    // Codes of ValType(). The window compares with VT_TEXT only.
    enum ValueType { VT_EMPTY = 0, VT_INT = 1, VT_DOUBLE = 2, VT_TEXT = 3 };

    VorVar();
    VorVar(const char* text);  // a null pointer makes an empty text
    explicit VorVar(int value);
    explicit VorVar(double value);
    VorVar(const VorVar& other);
    VorVar& operator=(const VorVar& other);
    ~VorVar();

    // The text, valid while this object lives and is not assigned to; "" when
    // the variant holds no text.
    const char* S() const;
    // The number held; 0 for a text or an empty variant.
    int I() const;
    double D() const;

    int ValType() const;

private:
    int m_type;
    std::string m_text;
    double m_number;
};
