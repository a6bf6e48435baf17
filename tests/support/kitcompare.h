#pragma once

// Near-comparisons for the numbers a test reads back: doubles, points,
// rectangles and parameter lists, each within a tolerance, with a readable
// text of both sides for the failure message. Use KIT_COMPARE_NEAR in a test
// function; the bool functions serve QVERIFY2 and loops.

#include <QList>
#include <QMap>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <QtTest/QTest>

#include <algorithm>
#include <initializer_list>

#include <cmath>

namespace Kit {

// A shape's parameters in the order its GetParam writes them.
using Params = QVector<double>;

// The default tolerance for geometry computed in float.
constexpr double kGeometryTolerance = 1e-3;

inline bool near(double actual, double expected, double tolerance = kGeometryTolerance)
{
    return std::abs(actual - expected) <= tolerance;
}

inline bool near(const QPointF& actual, const QPointF& expected, double tolerance = kGeometryTolerance)
{
    return near(actual.x(), expected.x(), tolerance) && near(actual.y(), expected.y(), tolerance);
}

inline bool near(const QRectF& actual, const QRectF& expected, double tolerance = kGeometryTolerance)
{
    return near(actual.topLeft(), expected.topLeft(), tolerance)
        && near(actual.bottomRight(), expected.bottomRight(), tolerance);
}

inline bool near(const Params& actual, const Params& expected, double tolerance = kGeometryTolerance)
{
    if (actual.size() != expected.size())
        return false;
    for (int i = 0; i < actual.size(); ++i) {
        if (!near(actual[i], expected[i], tolerance))
            return false;
    }
    return true;
}

inline QString text(double value)
{
    return QString::number(value, 'g', 17);
}

inline QString text(const QPointF& p)
{
    return QString("(%1, %2)").arg(text(p.x()), text(p.y()));
}

inline QString text(const QRectF& r)
{
    return QString("(%1, %2, %3 x %4)").arg(text(r.x()), text(r.y()), text(r.width()), text(r.height()));
}

inline QString text(const Params& values)
{
    QStringList parts;
    for (double v : values)
        parts << text(v);
    return "{" + parts.join(", ") + "}";
}

template <class T>
QString mismatch(const T& actual, const T& expected, double tolerance)
{
    return QString("%1, expected %2 within %3").arg(text(actual), text(expected), text(tolerance));
}

// The painter path of a handle map: one rectangle a handle, in key order.
inline QPainterPath pathOfRects(const QMap<int, QRectF>& handles)
{
    QPainterPath path;
    for (int key = 0; key < handles.size(); ++key)
        path.addRect(handles.value(key));
    return path;
}

// One row a value of an enum, in a column of ints, each row named by name().
template <class Enum>
void addEnumRows(const char* column, std::initializer_list<Enum> values, const char* (*name)(Enum))
{
    QTest::addColumn<int>(column);
    for (Enum value : values)
        QTest::newRow(name(value)) << int(value);
}

// Fails the running test unless the codes, in the order given, count up by
// one from first: the numbers a host keeps in its own code.
inline void verifyCodesCountUp(int first, std::initializer_list<int> codes)
{
    int expected = first;
    for (int code : codes) {
        QVERIFY2(code == expected, qPrintable(QString("code %1 where %2 belongs").arg(code).arg(expected)));
        ++expected;
    }
}

// The zooms a test of handles or painting runs at, one row each in a column
// of doubles, named "zoom 1" and so on.
inline void addZoomRows(std::initializer_list<double> zooms = {0.25, 1.0, 4.0})
{
    QTest::addColumn<double>("zoom");
    for (double zoom : zooms)
        QTest::addRow("zoom %g", zoom) << zoom;
}

// A handle square is kHandleSide scene units at zoom 1 and above, so that it
// never paints smaller than kHandleSide device pixels; zoomed out it grows in
// scene units by the handle scale, 1 / zoom.
constexpr double kHandleSide = 6.0;

inline double handleScale(double zoom)
{
    return std::max(1.0, 1.0 / zoom);
}

inline double handleSideInScene(double zoom)
{
    return kHandleSide * handleScale(zoom);
}

// The side in device pixels of such a square painted in scene units.
inline int handleSideOnScreen(double zoom)
{
    return int(handleSideInScene(zoom) * zoom);
}

// The point that a signal reported as its first two arguments, x then y, as a
// QSignalSpy holds one emission.
inline QPointF reportedPoint(const QList<QVariant>& emission)
{
    return QPointF(emission.value(0).toDouble(), emission.value(1).toDouble());
}

} // namespace Kit

// Fails the test function unless actual lies within tolerance of expected.
#define KIT_COMPARE_NEAR(actual, expected, tolerance)                                                                  \
    do {                                                                                                               \
        const auto kitActual_ = (actual);                                                                              \
        const decltype(kitActual_) kitExpected_ = (expected);                                                          \
        QVERIFY2(Kit::near(kitActual_, kitExpected_, (tolerance)),                                                     \
                 qPrintable(Kit::mismatch(kitActual_, kitExpected_, (tolerance))));                                   \
    } while (false)
