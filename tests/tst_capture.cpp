// Screenshots: the rectangle of the view that holds the picture, files in the
// format their suffix names (JPEG without one), and grabs into a VorImage, all
// taken from the view's painted pixels.

#include <QtTest/QtTest>

#include "ImageLayer.h"
#include "KESImageWnd.h"
#include "MainWindow.h"
#include "ShapeLayer.h"
#include "imagectrlscene.h"
#include "imagectrlview.h"
#include "odrect1.h"
#include "testkit.h"

#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>

#include <opencv2/core.hpp>

namespace {

// A host of 300 x 270 holds a window whose view, under the tool bar and above
// the status bar, is 300 x 200.
const QSize kHostSize(300, 270);

VorImage picture(int width, int height)
{
    cv::Mat mat(height, width, CV_8UC3);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            mat.at<cv::Vec3b>(y, x) = cv::Vec3b(uchar(x * 2), uchar(y * 3), uchar(200 - x));
    return VorImage(mat);
}

VorImage grayPicture(int width, int height, int value)
{
    return VorImage(cv::Mat(height, width, CV_8UC3, cv::Scalar(value, value, value)));
}

QByteArray headOf(const QString& path, int count)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.read(count);
}

// The pixels the view paints in a rectangle of its own.
QImage viewPixels(ImageCtrlView* view, const QRect& rect)
{
    return view->grab(rect).toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

class tst_Capture : public QObject
{
    Q_OBJECT

private:
    // A window with a picture at a given scale; the view is 300 x 200.
    static void showPicture(EmbeddedWindow& e, VorImage image, double scale)
    {
        QCOMPARE(e.created, 0L);
        QCOMPARE(e.view()->size(), QSize(300, 200));
        QCOMPARE(e.wnd->setBackground(image), 0L);
        QCOMPARE(e.wnd->zoom(scale), 0L);
        QCOMPARE(e.scene()->getScale(), scale);
        QApplication::processEvents();
    }

private slots:
    void smallPictureIsCutFromTheCentreOfTheView();
    void largePictureGivesTheWholeView();
    void rectangleMixesBothRulesPerAxis();
    void rectangleTruncatesTheScaledSizeInFloat();
    void rectangleDoesNotFollowTheScrollPosition();
    void fileWithoutSuffixGetsJpegContentUnderThatName();
    void pngFileHoldsTheViewsPixels();
    void otherSuffixesChooseTheirFormat();
    void qimageBackgroundWritesNoFile();
    void noPictureWritesNothing();
    void callsWithoutWindowReturnMinusOne();
    void vorImageGetsFourChannelsOfTheViewsPixels();
    void captureShowsTheShapesOnThePicture();
};

void tst_Capture::smallPictureIsCutFromTheCentreOfTheView()
{
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(100, 80), 1.0);
    QCOMPARE(e.window()->grabRect(), QRect(100, 60, 100, 80));
}

void tst_Capture::largePictureGivesTheWholeView()
{
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(400, 300), 2.0);
    QCOMPARE(e.window()->grabRect(), QRect(0, 0, 300, 200));

    // The whole view includes the scroll bars.
    const QImage all = viewPixels(e.view(), e.view()->rect());
    QCOMPARE(all.size(), QSize(300, 200));
    VorImage grabbed;
    QCOMPARE(e.wnd->screenshot(&grabbed), 0L);
    QCOMPARE(grabbed.Width(), 300);
    QCOMPARE(grabbed.Height(), 200);
}

void tst_Capture::rectangleMixesBothRulesPerAxis()
{
    EmbeddedWindow e(kHostSize);
    // Wider than the view, lower than it.
    showPicture(e, picture(400, 100), 1.0);
    QCOMPARE(e.window()->grabRect(), QRect(0, 50, 300, 100));
}

void tst_Capture::rectangleTruncatesTheScaledSizeInFloat()
{
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(100, 80), double(1.06f));
    const float scale = float(e.scene()->getScale());
    // 100 * 1.06f in float is 105.99999: the width truncates to 105.
    QCOMPARE(int(float(100) * scale), 105);
    QCOMPARE(int(float(80) * scale), 84);
    QCOMPARE(e.window()->grabRect(), QRect((300 - 105) / 2, (200 - 84) / 2, 105, 84));
}

void tst_Capture::rectangleDoesNotFollowTheScrollPosition()
{
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(400, 300), 2.0);
    QScrollBar* bar = e.view()->horizontalScrollBar();
    QVERIFY(bar->maximum() > 0);
    bar->setValue(bar->maximum());
    e.view()->verticalScrollBar()->setValue(e.view()->verticalScrollBar()->maximum());
    QCOMPARE(e.window()->grabRect(), QRect(0, 0, 300, 200));
}

void tst_Capture::fileWithoutSuffixGetsJpegContentUnderThatName()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(100, 80), 1.0);

    const QString path = dir.filePath("shot");
    QCOMPARE(e.wnd->screenshot(path.toLocal8Bit().constData()), 0L);
    QVERIFY(QFile::exists(path));
    QVERIFY(!QFile::exists(path + ".jpg"));
    QVERIFY(!QFile::exists(path + ".jpeg"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList({"shot"}));
    QCOMPARE(headOf(path, 3), QByteArray("\xFF\xD8\xFF", 3));
    const QImage saved(path, "JPG");
    QCOMPARE(saved.size(), QSize(100, 80));
}

void tst_Capture::pngFileHoldsTheViewsPixels()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(100, 80), 1.0);

    const QString path = dir.filePath("shot.png");
    QCOMPARE(e.wnd->screenshot(path.toLocal8Bit().constData()), 0L);
    QCOMPARE(headOf(path, 4), QByteArray("\x89PNG", 4));
    const QImage saved = QImage(path).convertToFormat(QImage::Format_RGB32);
    const QRect rect(100, 60, 100, 80);
    QCOMPARE(saved.size(), rect.size());
    QCOMPARE(saved, viewPixels(e.view(), rect));
}

void tst_Capture::otherSuffixesChooseTheirFormat()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(100, 80), 1.0);

    const QString bmp = dir.filePath("shot.bmp");
    QCOMPARE(e.wnd->screenshot(bmp.toLocal8Bit().constData()), 0L);
    QCOMPARE(headOf(bmp, 2), QByteArray("BM"));
    QCOMPARE(QImage(bmp).convertToFormat(QImage::Format_RGB32), viewPixels(e.view(), QRect(100, 60, 100, 80)));

    const QString jpg = dir.filePath("shot.jpg");
    QCOMPARE(e.wnd->screenshot(jpg.toLocal8Bit().constData()), 0L);
    QCOMPARE(headOf(jpg, 3), QByteArray("\xFF\xD8\xFF", 3));

    // A suffix Qt cannot write: the call still says 0 and no file comes out.
    const QString unknown = dir.filePath("shot.unknownformat");
    QCOMPARE(e.wnd->screenshot(unknown.toLocal8Bit().constData()), 0L);
    QCOMPARE(e.window()->GrabWindow(unknown.toLocal8Bit().constData()), 0L);
    QVERIFY(!QFile::exists(unknown));
}

void tst_Capture::qimageBackgroundWritesNoFile()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    EmbeddedWindow e(kHostSize);
    QImage image(100, 80, QImage::Format_RGB32);
    image.fill(QColor(10, 20, 30));
    QCOMPARE(e.wnd->setBackground(image), 0L);
    QVERIFY(!e.window()->isVorImg());

    const QString path = dir.filePath("shot.png");
    QCOMPARE(e.wnd->screenshot(path.toLocal8Bit().constData()), 0L);
    QVERIFY(!QFile::exists(path));
    QCOMPARE(e.window()->GrabWindow(path.toLocal8Bit().constData()), -1L);
    QVERIFY(!QFile::exists(path));

    // Into a VorImage: the target is left as it was.
    VorImage target = grayPicture(5, 4, 7);
    QCOMPARE(e.wnd->screenshot(&target), 0L);
    QCOMPARE(e.window()->GrabWindow(&target), -1L);
    QCOMPARE(target.Width(), 5);
    QCOMPARE(target.Height(), 4);
    QCOMPARE(target.Channels(), 3);
}

void tst_Capture::noPictureWritesNothing()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    EmbeddedWindow e(kHostSize);
    const QString path = dir.filePath("shot");
    QCOMPARE(e.window()->GrabWindow(path.toLocal8Bit().constData()), -1L);
    QCOMPARE(e.wnd->screenshot(path.toLocal8Bit().constData()), 0L);
    QVERIFY(!QFile::exists(path));
    VorImage target;
    QCOMPARE(e.window()->GrabWindow(&target), -1L);
    QCOMPARE(e.wnd->screenshot(&target), 0L);
    QCOMPARE(target.Width(), 0);
}

void tst_Capture::callsWithoutWindowReturnMinusOne()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    KESImageWnd wnd;
    const QString path = dir.filePath("shot.png");
    QCOMPARE(wnd.screenshot(path.toLocal8Bit().constData()), -1L);
    QVERIFY(!QFile::exists(path));
    VorImage target;
    QCOMPARE(wnd.screenshot(&target), -1L);
    QCOMPARE(target.Width(), 0);

    // After destory the same.
    EmbeddedWindow e(kHostSize);
    QCOMPARE(e.wnd->destory(), 0L);
    QCOMPARE(e.wnd->screenshot(path.toLocal8Bit().constData()), -1L);
    QCOMPARE(e.wnd->screenshot(&target), -1L);
}

void tst_Capture::vorImageGetsFourChannelsOfTheViewsPixels()
{
    EmbeddedWindow e(kHostSize);
    showPicture(e, picture(100, 80), 1.0);
    const QRect rect = e.window()->grabRect();
    QCOMPARE(rect, QRect(100, 60, 100, 80));

    // The target's old content is replaced.
    VorImage target = grayPicture(3, 2, 9);
    QCOMPARE(e.wnd->screenshot(&target), 0L);
    QCOMPARE(target.Width(), rect.width());
    QCOMPARE(target.Height(), rect.height());
    QCOMPARE(target.Channels(), 4);
    const cv::Mat& mat = target.Mat();
    QCOMPARE(mat.type(), CV_8UC4);
    QCOMPARE(mat.cols, 100);
    QCOMPARE(mat.rows, 80);

    // Byte for byte the view's pixels there, in the memory order of the grab.
    const QImage grabbed = e.view()->grab(rect).toImage();
    QVERIFY(grabbed.format() == QImage::Format_RGB32 || grabbed.format() == QImage::Format_ARGB32
            || grabbed.format() == QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < mat.rows; ++y)
        QVERIFY2(memcmp(mat.ptr(y), grabbed.constScanLine(y), size_t(mat.cols) * 4) == 0,
                 qPrintable(QString("row %1 differs").arg(y)));
    // And those are the picture's pixels at scale 1, B, G, R in memory: the
    // view shows the picture in the middle of its viewport.
    ImageCtrlView* view = e.view();
    for (const QPoint& at : {QPoint(50, 40), QPoint(10, 70), QPoint(90, 5)}) {
        const QPoint inViewport = rect.topLeft() + at - view->viewport()->pos();
        const QPointF scenePoint = view->mapToScene(inViewport) + QPointF(0.5, 0.5);
        const int px = int(scenePoint.x());
        const int py = int(scenePoint.y());
        QVERIFY(px >= 0 && px < 100 && py >= 0 && py < 80);
        const cv::Vec4b p = mat.at<cv::Vec4b>(at.y(), at.x());
        QCOMPARE(int(p[0]), (px * 2) & 0xFF);
        QCOMPARE(int(p[1]), (py * 3) & 0xFF);
        QCOMPARE(int(p[2]), (200 - px) & 0xFF);
    }
}

void tst_Capture::captureShowsTheShapesOnThePicture()
{
    EmbeddedWindow e(kHostSize);
    showPicture(e, grayPicture(100, 80, 128), 1.0);
    ShaperLayer* layer = e.scene()->GetActiveLayer();
    auto* shape = new ODRect1(e.scene(), QPointF(20, 20));
    shape->SetPenColor(QColor(0, 0, 255));
    shape->SetLineWidth(3.0f);
    shape->SetRect(20, 20, 70, 60);
    layer->addShape(shape);
    shape->ShowShape();
    QApplication::processEvents();

    VorImage target;
    QCOMPARE(e.wnd->screenshot(&target), 0L);
    const cv::Mat& mat = target.Mat();
    QCOMPARE(mat.type(), CV_8UC4);
    int penPixels = 0;
    for (int y = 0; y < mat.rows; ++y)
        for (int x = 0; x < mat.cols; ++x) {
            const cv::Vec4b p = mat.at<cv::Vec4b>(y, x);
            if (p[0] > 200 && p[1] < 60 && p[2] < 60)
                ++penPixels;
        }
    // The blue outline of the rectangle is in the capture.
    QVERIFY2(penPixels > 50, qPrintable(QString::number(penPixels)));
}

QTEST_MAIN(tst_Capture)
#include "tst_capture.moc"
