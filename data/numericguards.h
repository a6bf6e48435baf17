#pragma once

#include <climits>
#include <cmath>

// int(value), truncated toward zero, where the plain cast would be undefined:
// NaN gives 0, values beyond int saturate. Within range it is the plain cast.
inline int TruncateToInt(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= double(INT_MAX))
        return INT_MAX;
    if (value <= double(INT_MIN))
        return INT_MIN;
    return int(value);
}

// qRound(value), halves rounded up, where qRound would be undefined: NaN gives
// 0, values beyond int saturate. Within range it equals qRound.
inline int RoundToInt(double value)
{
    return TruncateToInt(std::floor(value + 0.5));
}
