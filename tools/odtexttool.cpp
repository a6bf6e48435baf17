#include "odtexttool.h"

#include "ShapeLayer.h"
#include "eventthread.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odtext.h"

#include <QGraphicsSceneMouseEvent>

namespace {

const char* const kFirstContent = "text";

} // namespace

ODTextTool ODTextTool::s_ODTextTool;

ODTextTool::ODTextTool()
    : m_text(nullptr)
    , m_model(PickText)
    , m_newText(kFirstContent)
    , m_modeValue(PressNone)
{
}

// The text in hand belongs to its layer.
ODTextTool::~ODTextTool() = default;

ODTextTool* ODTextTool::GetODTextTool()
{
    return &s_ODTextTool;
}

void ODTextTool::setModel(Model model)
{
    m_model = model;
}

ODTextTool::Model ODTextTool::model() const
{
    return m_model;
}

void ODTextTool::setText(QString text)
{
    m_newText = text;
}

int ODTextTool::getModeValue() const
{
    return m_modeValue;
}

void ODTextTool::mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event)
{
    const QPointF scenePos = event->scenePos();
    ShaperLayer* layer = scene->GetActiveLayer();
    if (!layer)
        return;
    if (m_model == PlaceText && !m_text) {
        m_text = new ODText(scene, scenePos);
        m_text->SetText(m_newText);
        m_text->SetOffset(0, 0);
        m_text->SetScale(float(scene->getScale()));
        m_text->SetColor(scene->getPenColor());
        // The text starts where the press is: ShowText puts the item at the reference.
        m_text->UpdateOrgData();
        layer->AddText(m_text);
        m_text->ShowText();
        m_text->ShowHandle();
        if (ImageCtrlView* view = scene->getCtrlView())
            view->setLimitMousePos(false);
        m_modeValue = PressedText;
    }
    if (m_model == PickText) {
        m_text = layer->GetTextAtPoint(scenePos);
        if (m_text && !m_text->IsMovable()) {
            // A text the host holds in place is not picked; the last point stays.
            forgetText();
            m_model = PickText;
            scene->update();
            return;
        }
        if (m_text) {
            m_modeValue = PressedText;
            layer->AddSelectedText(m_text);
        } else {
            layer->ClearAllSelectedText();
            layer->ShowTextHandle();
        }
    }
    m_lastPoint = scenePos;
}

void ODTextTool::mouseMoveEvent(ImageCtrlScene*, QGraphicsSceneMouseEvent* event)
{
    if (!m_text)
        return;
    const QPointF scenePos = event->scenePos();
    m_text->MoveTo(scenePos - m_lastPoint);
    m_lastPoint = scenePos;
    m_text->ShowText();
    m_text->ShowHandle();
    m_modeValue = MovedText;
}

void ODTextTool::mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent*)
{
    if (m_text) {
        const long id = m_text->GetID();
        EventThread* relay = scene->GetEventThread();
        if (m_modeValue == PressedText)
            relay->sendShapeClicked(id);
        else if (m_modeValue == MovedText)
            relay->sendShapeMove(id);
    }
    // After the host has heard, so that a placement it arms from its slot
    // ends here too; nothing of the scene is touched from here on.
    forgetText();
    m_model = PickText;
}

void ODTextTool::forgetText()
{
    m_text = nullptr;
    m_modeValue = PressNone;
}

void ODTextTool::shapeDestroyed(ODShape*)
{
}

void ODTextTool::sceneDestroyed(QGraphicsScene* scene)
{
    if (m_text && m_text->getScene() == scene)
        forgetText();
}

void ODTextTool::textDestroyed(ODText* text)
{
    if (text == m_text)
        forgetText();
}
