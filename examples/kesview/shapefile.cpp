#include "shapefile.h"

#include <opencv2/imgproc.hpp>

#include <QFile>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <map>

namespace {

using Numbers = QVector<double>;

// The largest side of a region's mask that kesview makes.
constexpr double kLargestMask = 16384;

// Takes every argument as a number; false at the first that is not one.
bool parseNumbers(const QStringList& words, Numbers* numbers)
{
    numbers->clear();
    for (const QString& word : words) {
        bool ok = false;
        const double value = word.toDouble(&ok);
        if (!ok)
            return false;
        numbers->append(value);
    }
    return true;
}

VorPointArray pointArray(const Numbers& v)
{
    VorPointArray points;
    for (int i = 0; i + 1 < v.size(); i += 2)
        points.Append(VorPoint(v[i], v[i + 1]));
    return points;
}

// A kind: how many numbers it takes (minimum; an even list of any length for
// point lists) and how it fills a ROI and an overlay. A null filler: the kind
// does not exist on that side.
struct Kind
{
    int numbers;
    bool pointList;
    std::function<void(VorROI&, const Numbers&)> roi;
    std::function<void(VorOverlay&, const Numbers&)> overlay;
};

VorPoint at(const Numbers& v, int i)
{
    return VorPoint(v[i], v[i + 1]);
}

const std::map<QString, Kind>& kinds()
{
    static const std::map<QString, Kind> table = {
        {"point", {2, false, [](VorROI& r, const Numbers& v) { r.GenPoint(at(v, 0)); },
                   [](VorOverlay& o, const Numbers& v) { o.GenPoint(at(v, 0)); }}},
        {"line", {4, false, [](VorROI& r, const Numbers& v) { r.GenLine(at(v, 0), at(v, 2)); },
                  [](VorOverlay& o, const Numbers& v) { o.GenLine(at(v, 0), at(v, 2)); }}},
        {"arrowline", {4, false, nullptr, [](VorOverlay& o, const Numbers& v) { o.GenArrowLine(at(v, 0), at(v, 2)); }}},
        {"rect1", {4, false, [](VorROI& r, const Numbers& v) { r.GenRect1(at(v, 0), at(v, 2)); },
                   [](VorOverlay& o, const Numbers& v) { o.GenRect1(at(v, 0), at(v, 2)); }}},
        {"rakerect1", {6, false, nullptr,
                       [](VorOverlay& o, const Numbers& v) {
                           o.GenRakeRect1(at(v, 0), at(v, 2), int(v[4]), int(v[5]));
                       }}},
        {"rect2", {5, false, [](VorROI& r, const Numbers& v) { r.GenRect2(at(v, 0), v[2], v[3], v[4]); },
                   [](VorOverlay& o, const Numbers& v) { o.GenRect2(at(v, 0), v[2], v[3], v[4]); }}},
        {"rakerect2", {7, false, nullptr,
                       [](VorOverlay& o, const Numbers& v) {
                           o.GenRakeRect2(at(v, 0), v[2], v[3], v[4], int(v[5]), int(v[6]));
                       }}},
        {"ellipse", {5, false, [](VorROI& r, const Numbers& v) { r.GenEllipse(at(v, 0), v[2], v[3], v[4]); },
                     [](VorOverlay& o, const Numbers& v) { o.GenEllipse(at(v, 0), v[2], v[3], v[4]); }}},
        {"circle", {3, false, [](VorROI& r, const Numbers& v) { r.GenCircle(at(v, 0), v[2]); },
                    [](VorOverlay& o, const Numbers& v) { o.GenCircle(at(v, 0), v[2]); }}},
        {"arc", {5, false, [](VorROI& r, const Numbers& v) { r.GenArc(at(v, 0), v[2], v[3], v[4]); },
                 [](VorOverlay& o, const Numbers& v) { o.GenArc(at(v, 0), v[2], v[3], v[4]); }}},
        {"torus", {6, false, [](VorROI& r, const Numbers& v) { r.GenTorus(at(v, 0), v[2], v[3], v[4], v[5]); },
                   [](VorOverlay& o, const Numbers& v) { o.GenTorus(at(v, 0), v[2], v[3], v[4], v[5]); }}},
        {"spoketorus", {8, false, nullptr,
                        [](VorOverlay& o, const Numbers& v) {
                            o.GenSpokeTorus(at(v, 0), v[2], v[3], v[4], v[5], int(v[6]), int(v[7]));
                        }}},
        {"polygon", {2, true, [](VorROI& r, const Numbers& v) { r.GenPolygon(pointArray(v)); },
                     [](VorOverlay& o, const Numbers& v) { o.GenPolygon(pointArray(v)); }}},
        {"irregular", {2, true, [](VorROI& r, const Numbers& v) { r.GenIrregular(pointArray(v)); },
                       [](VorOverlay& o, const Numbers& v) { o.GenIrregular(pointArray(v)); }}},
        {"polyline", {2, true, nullptr, [](VorOverlay& o, const Numbers& v) { o.GenPolyLine(pointArray(v)); }}},
    };
    return table;
}

// "R,G,B,X": four whole numbers.
bool parseColour(const QString& text, long channels[4])
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 4)
        return false;
    for (int i = 0; i < 4; ++i) {
        bool ok = false;
        channels[i] = parts.at(i).trimmed().toLong(&ok);
        if (!ok)
            return false;
    }
    return true;
}

// Takes "pen R,G,B,W" and "brush R,G,B,A" off the end of an overlay line.
bool takeColours(QStringList* words, VorOverlay* overlay, QString* error)
{
    for (int i = 0; i < words->size();) {
        const QString& word = words->at(i);
        if (word != QLatin1String("pen") && word != QLatin1String("brush")) {
            ++i;
            continue;
        }
        long c[4];
        if (i + 1 >= words->size() || !parseColour(words->at(i + 1), c)) {
            *error = QStringLiteral("%1 wants R,G,B,%2").arg(word, word == QLatin1String("pen") ? "WIDTH" : "ALPHA");
            return false;
        }
        if (word == QLatin1String("pen"))
            overlay->SetPen(c[0], c[1], c[2], c[3]);
        else
            overlay->SetBrush(c[0], c[1], c[2], c[3]);
        words->erase(words->begin() + i, words->begin() + i + 2);
    }
    return true;
}

bool parseLine(const QString& text, ShapeFileEntry* entry, QString* error)
{
    QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (!words.isEmpty() && words[0] == QLatin1String("image")) {
        entry->layer = KESImageWnd::LAYER_IMAGE;
        words.removeFirst();
    } else if (!words.isEmpty() && words[0] == QLatin1String("fore")) {
        entry->layer = KESImageWnd::LAYER_FORE;
        words.removeFirst();
    }
    if (words.size() < 2 || (words[0] != QLatin1String("roi") && words[0] != QLatin1String("overlay"))) {
        *error = QStringLiteral("a line starts with \"roi\" or \"overlay\" and a kind, after \"image\" or \"fore\" "
                                "for a static layer");
        return false;
    }
    entry->isROI = words[0] == QLatin1String("roi");
    const QString kindName = words[1];
    words = words.mid(2);
    // Colours first: a text's words run to the end of the line.
    if (!entry->isROI && !takeColours(&words, &entry->overlay, error))
        return false;

    if (!entry->isROI && kindName == QLatin1String("text")) {
        Numbers head;
        if (words.size() < 4 || !parseNumbers(words.mid(0, 3), &head)) {
            *error = QStringLiteral("text wants X Y SIZE and words");
            return false;
        }
        VorFont font("", int(head[2]));
        const QByteArray message = words.mid(3).join(QLatin1Char(' ')).toLocal8Bit();
        entry->overlay.GenText(VorPoint(head[0], head[1]), message.constData(), font);
        return true;
    }

    if (!entry->isROI && kindName == QLatin1String("region")) {
        // A disc of pixels: the mask covers the picture from its origin.
        Numbers disc;
        if (!parseNumbers(words, &disc) || disc.size() != 3 || disc[0] < 0 || disc[1] < 0 || disc[2] < 1
            || disc[0] + disc[2] > kLargestMask || disc[1] + disc[2] > kLargestMask) {
            *error = QStringLiteral("region wants CX CY R, a disc within %1 pixels").arg(kLargestMask);
            return false;
        }
        cv::Mat mask(int(disc[1] + disc[2]) + 1, int(disc[0] + disc[2]) + 1, CV_8UC1, cv::Scalar(0));
        cv::circle(mask, cv::Point(int(disc[0]), int(disc[1])), int(disc[2]), cv::Scalar(255), cv::FILLED);
        entry->overlay.GenRegion(VorRegion(VorImage(mask)));
        return true;
    }

    const auto found = kinds().find(kindName);
    if (found == kinds().end() || !(entry->isROI ? bool(found->second.roi) : bool(found->second.overlay))) {
        *error = QStringLiteral("no %1 of the kind \"%2\"").arg(entry->isROI ? "roi" : "overlay", kindName);
        return false;
    }
    const Kind& kind = found->second;
    Numbers numbers;
    const bool fits = parseNumbers(words, &numbers)
                      && (kind.pointList ? numbers.size() >= kind.numbers && numbers.size() % 2 == 0
                                         : numbers.size() == kind.numbers);
    if (!fits) {
        *error = kind.pointList ? QStringLiteral("%1 wants pairs of numbers").arg(kindName)
                                : QStringLiteral("%1 wants %2 numbers").arg(kindName).arg(kind.numbers);
        return false;
    }
    if (entry->isROI)
        kind.roi(entry->roi, numbers);
    else
        kind.overlay(entry->overlay, numbers);
    return true;
}

} // namespace

bool readShapeFile(const QString& path, QVector<ShapeFileEntry>* entries, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = file.errorString();
        return false;
    }
    entries->clear();
    QTextStream in(&file);
    int number = 0;
    while (!in.atEnd()) {
        ++number;
        QString text = in.readLine();
        const int comment = text.indexOf(QLatin1Char('#'));
        if (comment >= 0)
            text.truncate(comment);
        if (text.trimmed().isEmpty())
            continue;
        ShapeFileEntry entry;
        entry.line = number;
        QString why;
        if (!parseLine(text.trimmed(), &entry, &why)) {
            *error = QStringLiteral("line %1: %2").arg(number).arg(why);
            return false;
        }
        entries->append(entry);
    }
    return true;
}

QString shapeFileLine(const VorROI& roi)
{
    VorPoint a;
    VorPoint b;
    double d[4] = {0, 0, 0, 0};
    VorPointArray points;
    QString kind;
    Numbers v;
    switch (roi.ROIType()) {
    case VorROI::ROI_POINT: roi.GetPoint(&a); kind = "point"; v = {a.x, a.y}; break;
    case VorROI::ROI_LINE: roi.GetLine(&a, &b); kind = "line"; v = {a.x, a.y, b.x, b.y}; break;
    case VorROI::ROI_RECT1: roi.GetRect1(&a, &b); kind = "rect1"; v = {a.x, a.y, b.x, b.y}; break;
    case VorROI::ROI_RECT2:
        roi.GetRect2(&a, &d[0], &d[1], &d[2]);
        kind = "rect2";
        v = {a.x, a.y, d[0], d[1], d[2]};
        break;
    case VorROI::ROI_ELLIPSE:
        roi.GetEllipse(&a, &d[0], &d[1], &d[2]);
        kind = "ellipse";
        v = {a.x, a.y, d[0], d[1], d[2]};
        break;
    case VorROI::ROI_CIRCLE: roi.GetCircle(&a, &d[0]); kind = "circle"; v = {a.x, a.y, d[0]}; break;
    case VorROI::ROI_ARC:
        roi.GetArc(&a, &d[0], &d[1], &d[2]);
        kind = "arc";
        v = {a.x, a.y, d[0], d[1], d[2]};
        break;
    case VorROI::ROI_TORUS:
        roi.GetTorus(&a, &d[0], &d[1], &d[2], &d[3]);
        kind = "torus";
        v = {a.x, a.y, d[0], d[1], d[2], d[3]};
        break;
    case VorROI::ROI_POLYGON: roi.GetPolygon(&points); kind = "polygon"; break;
    case VorROI::ROI_IRREGULAR: roi.GetIrregular(&points); kind = "irregular"; break;
    default: return QStringLiteral("roi ?");
    }
    for (int i = 0; i < points.Length(); ++i)
        v << points[i].x << points[i].y;
    QStringList words{QStringLiteral("roi"), kind};
    for (double value : v)
        words << QString::number(value, 'g', 10);
    return words.join(QLatin1Char(' '));
}
