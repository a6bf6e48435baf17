#pragma once

#include "odshapelayer.h"
#include "vorimagewnd_global.h"

#include "VorROI.h"

#include <QList>
#include <QMap>

class ODItemRegion;
class ODText;
class VorOverlay;
class VorImage;
class VorOverlayPath;
class VorPoint;
struct ShapeLook;

// A layer of live shapes in the scene. The scene makes two with index 0, the
// active layer that operator-drawn and host-drawn shapes go to, and the static
// layer. Every display call of the host makes a new shape with a new id
// through the shape operator, never replacing one, and each call takes the
// next z value of the layer's counter, which starts at index * 3000, also
// when it then refuses the data; the read-back calls give a shape's
// parameters back as data by id. Data and shapes meet in ShapeConversion.
class KESIMAGEWND_TESTS_EXPORT ShaperLayer : public ODShapeLayer
{
public:
    // The band of z values that each further layer index starts above.
    static constexpr long s_zBandPerLayer = 3000;

    ShaperLayer(ImageCtrlScene* scene, int layerIndex);
    ~ShaperLayer() override;

    int layerIndex() const { return m_layerIndex; }
    // The z value the last display call took.
    long zValue() const { return m_zValue; }

    // With checkImage a window that shows a data-model picture needs a valid
    // one first: -1 without it, before anything else happens. The new id, or
    // -1 for a type without a shape.
    long DrawROI(VorROI& roi, bool checkImage);
    // The same for an overlay, marked as one on the shape; its own pen and
    // brush, if it brings them, replace the window's.
    long DrawOverlay(VorOverlay& overlay, bool checkImage);
    // Every overlay of the path in order, also after a failed one; the id of
    // the first that was drawn, or -1.
    long DrawOverlayPath(VorOverlayPath const& path, bool checkImage);
    // An overlay drawn into the scene's static layer, with this layer's z
    // counter; while the image layer shows a data-model picture, only over a
    // valid one.
    long DrawStaticOverlay(VorOverlay& overlay);
    // The picture as a shape with its top left at point (scene coordinates),
    // in the window's look, with the next z value; the picture is not checked
    // and must outlive the shape.
    long DrawImage(VorImage& image, VorPoint& point);

    // The routines of DrawROI, one a kind, on the ROI of the call under way.
    // Each takes the next z value, then refuses (-1) a ROI of another type.
    long DrawROIPoint();
    long DrawROILine();
    long DrawROIRectangle();
    long DrawROIRectangle2();
    long DrawROIEllipse();
    long DrawROICircle();
    long DrawROIPolygon();
    long DrawROIAnyLine();
    long DrawROITourse();
    long DrawROIArc();
    // The mask as the layer's region, replacing the one held, in the
    // window's brush colour.
    long DrawROIMask();

    // The routines of DrawOverlay. Each takes the next z value, then refuses
    // (-1) an overlay of a type it does not draw.
    long DrawOverlayPoint(VorOverlay& overlay);
    long DrawOverlayLine(VorOverlay& overlay);
    long DrawOverlayArrowLine(VorOverlay& overlay);
    long DrawOverlayRectangle(VorOverlay& overlay);
    long DrawOverlayRectangle2(VorOverlay& overlay);
    long DrawOverlayEllipse(VorOverlay& overlay);
    long DrawOverlayCircle(VorOverlay& overlay);
    long DrawOverlayPolygon(VorOverlay& overlay);
    long DrawOverlayAnyLine(VorOverlay& overlay);
    long DrawOverlayAnyClosedLine(VorOverlay& overlay);
    long DrawOverlayTourse(VorOverlay& overlay);
    long DrawOverlayArc(VorOverlay& overlay);
    // A text in its own pen or the window's, with its own font.
    long DrawOverlayText(VorOverlay& overlay);
    // The layer's region, replacing the one held, in the overlay's own brush
    // or else opaque green.
    long DrawOverlayRegion(VorOverlay& overlay);

    // 0 and the shape's parameters as a ROI when the id is this layer's
    // (a mask ROI comes back as it went in), -1 otherwise. A shape without a
    // ROI form leaves roi as it was and still answers 0.
    long GetROIShape(long id, VorROI* roi);
    // 0 and the shape's parameters and colours as an overlay when the id is
    // this layer's, -1 otherwise; a shape without an overlay form leaves the
    // overlay as it was and still answers 0.
    long GetOverlay(long long id, VorOverlay* overlay);
    // GetOverlay, step for step, on the layer it is called on.
    long GetStaticOverlay(long long id, VorOverlay* overlay);
    // Dispatch by the shape's mode, not by how it came in; false for null, a
    // mode without that form, or a shape without parameters.
    bool TypeOverlayConversion(ODShape* shape, VorOverlay& overlay);
    bool TypeROIConversion(ODShape* shape, VorROI* roi);
    // 0 when the id is a shape of this layer, -1 otherwise; an image shape
    // with a picture writes it to image (which then shares its pixels).
    long GetImage(long id, VorImage* image);

    // Hides or shows the shape of that id (0); a shown shape does not get its
    // handles back. -1 for any other id.
    long ShapeVisible(long id, bool visible);
    long setShapeMovable(long long id, bool movable);
    bool isShapeMovable(long long id);
    long setShapeSelectable(long long id, bool selectable);
    bool isShapeSelectable(long long id);
    // The ids of the shapes, oldest first.
    QList<long> getShapeIDS();
    // Selection by the host: the shape of that id shows its handles and
    // becomes the only selected shape and the select tool's current one.
    void ShowShapeHandle(long long id);

    const QMap<long, VorROI>& maskROIs() const { return m_maskROIs; }

    // The one region of the layer. AddRegion takes ownership and deletes the
    // region held before; ClearRegion deletes it; removeRegion does so when
    // the id is the region's. UpdateRegion and ShowRegion do nothing: a
    // region shows itself when it is loaded.
    void AddRegion(ODItemRegion* region);
    void ClearRegion();
    void removeRegion(long id);
    void UpdateRegion();
    void ShowRegion();
    ODItemRegion* region() const { return m_region; }

private:
    // The window's look of this moment: the scene's pen, brush, truncated
    // line width and cross size.
    ShapeLook sceneLook() const;
    // False when checkImage asks for a valid data-model picture and there is none.
    bool imageAccepts(bool checkImage) const;
    // Takes the next z value, then draws m_roi by the ROI row of mode.
    long drawROIOfMode(DrawMode mode);
    // Takes the next z value, then draws the overlay by the row of mode that
    // takes its type.
    long drawOverlayOfMode(DrawMode mode, VorOverlay& overlay);
    long drawOverlayByType(VorOverlay& overlay);
    // Takes the next z value, then draws the overlay by the row of a code
    // without a draw mode, if the overlay has that code.
    long drawOverlayOfCode(int code, VorOverlay& overlay);
    static void textToOverlay(const ODText& text, VorOverlay* overlay);

    // The ROI of the DrawROI call under way; not cleared afterwards.
    // The text of that id in this layer, or null.
    ODText* textById(long id) const;

    VorROI* m_roi;
    ODItemRegion* m_region;
    int m_layerIndex;
    long m_zValue;
    QMap<long, VorROI> m_maskROIs;

    // Texts. A layer keeps its texts beside its shapes, in lists of their own,
    // and owns them: they go with the layer, while its scene is still whole.
public:
    // Takes ownership; marks the text as an overlay when the scene is in
    // overlay mode. No repaint.
    void AddText(ODText* text);
    // Appends to the selected texts, duplicates allowed.
    void AddSelectedText(ODText* text);
    // Deletes every text; the selected list is left as it is.
    void ClearAllText();
    // Deletes the first text of the id; an unknown id changes nothing. The
    // selected list is not touched.
    void removeText(long id);
    // Empties the selected list; handles are not hidden.
    void ClearAllSelectedText();
    // The oldest text whose item contains point (scene coordinates), or null.
    ODText* GetTextAtPoint(QPointF const& point) const;
    // Every text takes the scene's present scale and pen colour, whatever
    // colour it had.
    void UpdateText();
    void ShowText();
    void ShowTextHandle();
    const QVector<ODText*>& texts() const { return m_texts; }
    const QVector<ODText*>& selectedTexts() const { return m_selectedTexts; }

private:
    QVector<ODText*> m_texts;
    QVector<ODText*> m_selectedTexts;
};
