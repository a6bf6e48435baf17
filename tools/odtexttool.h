#pragma once

#include "odshapewatcher.h"

#include <QPointF>
#include <QString>
#include <QtGlobal>

class ImageCtrlScene;
class ODText;
class QGraphicsSceneMouseEvent;

// The tool that places and moves texts, one object of the process beside the
// tool manager and shared by all windows, so each call names its scene. The
// scene hands it every press, move and release but the right button's, in any
// draw mode, after the tool of the mode. In the placing model a press puts a
// new text of the set content on the active layer; in the picking model a
// press takes the movable text under the mouse. Moves drag the text in hand;
// the release reports shapeClicked for a text pressed and let go, shapeMoved
// for one dragged, and returns to the picking model. Positions are scene
// coordinates.
//
// It outlives every window, so it watches texts and scenes: the text in hand
// is forgotten when the text or its scene is destroyed.
class KESIMAGEWND_TESTS_EXPORT ODTextTool : public ODShapeWatcher
{
public:
    // What a press does.
    enum Model : qint32 { PickText = 0, PlaceText = 1 };
    // What the current press has become, read at the release.
    enum ModeValue { PressNone = -1, PressedText = 1, MovedText = 2 };

    ODTextTool();
    ~ODTextTool() override;

    static ODTextTool* GetODTextTool();

    void setModel(Model model);
    Model model() const;
    // The content of the next text placed.
    void setText(QString text);
    int getModeValue() const;

    void mousePressEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);
    void mouseMoveEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);
    void mouseReleaseEvent(ImageCtrlScene* scene, QGraphicsSceneMouseEvent* event);

    // The tool keeps no shape.
    void shapeDestroyed(ODShape* shape) override;
    void sceneDestroyed(QGraphicsScene* scene) override;
    void textDestroyed(ODText* text) override;

    ODText* text() const { return m_text; }
    QPointF lastPoint() const { return m_lastPoint; }
    QString newText() const { return m_newText; }

private:
    // Drops the text in hand and the state of its press.
    void forgetText();

    ODText* m_text;
    Model m_model;
    QPointF m_lastPoint;
    QString m_newText;
    int m_modeValue;

    static ODTextTool s_ODTextTool;
};
