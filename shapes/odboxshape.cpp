#include "odboxshape.h"

#include "geometryhelpers.h"

#include <array>

namespace {

// The sides each handle number moves and so writes back; index = number.
constexpr unsigned kLeft = 1u << 0;
constexpr unsigned kTop = 1u << 1;
constexpr unsigned kRight = 1u << 2;
constexpr unsigned kBottom = 1u << 3;
constexpr std::array<unsigned, 9> kOwnedSlots = {
    0,                  // none
    kLeft | kTop,       // 1 top left
    kTop,               // 2 top centre
    kRight | kTop,      // 3 top right
    kRight,             // 4 right centre
    kRight | kBottom,   // 5 bottom right
    kBottom,            // 6 bottom centre
    kLeft | kBottom,    // 7 bottom left
    kLeft,              // 8 left centre
};

// Handle numbers of two opposite corners, which together own every side.
constexpr int kTopLeftNumber = 1;
constexpr int kBottomRightNumber = 5;

} // namespace

ODBoxShape::ODBoxShape(QGraphicsScene* scene, DrawMode mode)
    : ODShape(scene, mode)
{
}

void ODBoxShape::startAt(QPointF point)
{
    shownStateChanged();
    m_rect = QRectF(point, QSizeF(0, 0));
    UpdateHandles();
}

void ODBoxShape::MoveHandleTo(int number, const QPointF& pos)
{
    shownStateChanged();
    switch (number) {
    case 1: m_rect.setTopLeft(pos); break;
    case 2: m_rect.setTop(pos.y()); break;
    case 3: m_rect.setTopRight(pos); break;
    case 4: m_rect.setRight(pos.x()); break;
    case 5: m_rect.setBottomRight(pos); break;
    case 6: m_rect.setBottom(pos.y()); break;
    case 7: m_rect.setBottomLeft(pos); break;
    case 8: m_rect.setLeft(pos.x()); break;
    default: break;
    }
    UpdateOrgData(number);
}

void ODBoxShape::MoveShape(const QPointF& delta)
{
    shownStateChanged();
    m_rect.setTopLeft(m_rect.topLeft() + delta);
    m_rect.setBottomRight(m_rect.bottomRight() + delta);
    // The four corners own every side between them.
    for (int number : {1, 3, 5, 7})
        UpdateOrgData(number);
}

void ODBoxShape::UpdateOrgData(int number)
{
    shownStateChanged();
    storeOrgData(number, {m_rect.left(), m_rect.top(), m_rect.right(), m_rect.bottom()}, kOwnedSlots);
}

void ODBoxShape::UpdateCurData()
{
    if (!hasOrgData(SlotCount))
        return;
    m_rect.setLeft(m_orgData[Left]);
    m_rect.setTop(m_orgData[Top]);
    m_rect.setRight(m_orgData[Right]);
    m_rect.setBottom(m_orgData[Bottom]);
}

void ODBoxShape::AdjustParameter()
{
    shownStateChanged();
    AdjustRect(m_rect);
    UpdateOrgData(kTopLeftNumber);
    UpdateOrgData(kBottomRightNumber);
}

void ODBoxShape::setHandleCursor(QPointF point)
{
    static const QVector<Qt::CursorShape> cursors = {
        Qt::ArrowCursor,     Qt::SizeFDiagCursor, Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor,
        Qt::SizeFDiagCursor, Qt::SizeVerCursor,   Qt::SizeBDiagCursor, Qt::SizeHorCursor};
    setViewportCursor(point, cursors);
}

void ODBoxShape::setSides(double left, double top, double right, double bottom)
{
    shownStateChanged();
    m_orgData = {left, top, right, bottom};
}

bool ODBoxShape::readSides(double* left, double* top, double* right, double* bottom) const
{
    return readOrgData({left, top, right, bottom});
}
