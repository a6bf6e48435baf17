#pragma once

#include "inspection.h"

#include <KESImageWnd.h>

#include <QEvent>
#include <QMainWindow>
#include <QPointF>
#include <QStringList>
#include <QVector>

class QGraphicsView;
class QPushButton;
class QWidget;

// The demo host's main window: one KESImageWnd embedded in the central widget,
// kept filling it, and a list of picture files to step through.
class ViewerWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit ViewerWindow(const QStringList& files, QWidget* parent = nullptr);
    ~ViewerWindow() override;

    // Prints every signal of the image window to stdout, one line each, and
    // after every shape signal the shape as the window gives it back by id:
    // a region of interest as a line of a shape file.
    void reportEvents();

    // Runs the hole check on every picture shown from now on and shows its
    // result on the three layers; off, a picture is shown bare.
    void setInspection(bool on, const InspectionSettings& settings = InspectionSettings());
    // The result of the last check, empty when none ran.
    const InspectionResult& lastInspection() const { return m_inspection; }

    // Shows the picture at `index` of the list, or the generated picture when
    // the list is empty. False when the file cannot be read.
    bool showPicture(int index);
    int pictureCount() const { return m_files.size(); }

    KESImageWnd* imageWindow() const { return m_imageWnd; }

    // The widgets the image window builds inside the central widget, found as
    // any host finds them: the view that shows the picture, and the tool bar's
    // button of a number (0 load ... 6 rectangle ... 12 point). Null when not
    // there.
    QGraphicsView* pictureView() const;
    QPushButton* toolbarButton(int number) const;

    // Puts the window into rectangle drawing, as a click on the tool bar's
    // rectangle button does. False when the button is not there.
    bool startRectangleDrawing();

    // Draws a rectangle from one corner to the other (picture pixels) with the
    // mouse, as an operator would, then clicks inside it so that it is selected
    // and shows its handles. False, and why in `error`, when the view or the
    // button is not there or a corner lies outside what the view shows.
    bool drawRectangle(const QPointF& from, const QPointF& to, QString* error);

    // The shapes the tool bar's draw buttons make, by the names kesview gives
    // them: line, rect, rect2, ellipse, circle, annulus, polygon, point.
    static QStringList drawKinds();
    // Draws a shape of a kind with the mouse after a click on its button, as
    // an operator would (picture pixels): a drag from the first point to the
    // second for the shapes of one drag (the centre first for the round ones),
    // a click for a point, and a click on every corner of a polygon with a
    // double click on the last. False, and why in `error`, when the kind is
    // unknown, the points do not fit it, or one lies outside what the view
    // shows.
    bool drawShape(const QString& kind, const QVector<QPointF>& points, QString* error);
    // A click of the operator at a picture point, e.g. to select a shape.
    bool clickPicture(const QPointF& point, QString* error);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addShortcuts();
    void onButtonClicked(long button);
    void openPictureDialog();
    void sendMouse(QEvent::Type type, const QPointF& picturePos, Qt::MouseButton button, Qt::MouseButtons buttons);
    // False, and why in `error`, when the view is missing or a point lies
    // outside what it shows.
    bool reachable(const QVector<QPointF>& points, QString* error) const;
    void step(int delta);
    void togglePixelValues();
    void setTitle(const QString& what);
    void inspect(const cv::Mat& picture, const QString& source);
    // The shape of an id as the window gives it back, printed as one line.
    void printReadBack(long id);

    QStringList m_files;
    int m_current;
    QWidget* m_central;
    KESImageWnd* m_imageWnd;
    bool m_pixelValues;
    bool m_inspect;
    bool m_reporting;
    InspectionSettings m_inspectionSettings;
    InspectionResult m_inspection;
    // The outlines the last check put on the shape layer, removed by id when
    // the next picture comes so that the operator's own shapes stay.
    QVector<long> m_outlineIds;
};
