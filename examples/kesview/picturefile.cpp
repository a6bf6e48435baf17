#include "picturefile.h"

#include <opencv2/imgcodecs.hpp>

#include <QFileInfo>

namespace {

QString depthName(int depth)
{
    switch (depth) {
    case CV_8U: return QStringLiteral("8-bit");
    case CV_8S: return QStringLiteral("8-bit signed");
    case CV_16U: return QStringLiteral("16-bit");
    case CV_16S: return QStringLiteral("16-bit signed");
    case CV_32S: return QStringLiteral("32-bit integer");
    case CV_32F: return QStringLiteral("32-bit float");
    case CV_64F: return QStringLiteral("64-bit float");
    default: return QStringLiteral("depth %1").arg(depth);
    }
}

// Keeps the first `keep` channels of a picture.
cv::Mat firstChannels(const cv::Mat& mat, int keep)
{
    cv::Mat out(mat.rows, mat.cols, CV_MAKETYPE(mat.depth(), keep));
    std::vector<int> fromTo;
    for (int c = 0; c < keep; ++c) {
        fromTo.push_back(c);
        fromTo.push_back(c);
    }
    cv::mixChannels(&mat, 1, &out, 1, fromTo.data(), size_t(keep));
    return out;
}

// Stretches any depth onto 8 bits, minimum to 0 and maximum to 255, over all
// channels together so that colours keep their balance.
cv::Mat stretchToEightBit(const cv::Mat& mat)
{
    cv::Mat flat = mat.isContinuous() ? mat.reshape(1) : mat.clone().reshape(1);
    double lo = 0.0;
    double hi = 0.0;
    cv::minMaxLoc(flat, &lo, &hi);
    const double range = hi > lo ? hi - lo : 1.0;
    cv::Mat out;
    mat.convertTo(out, CV_MAKETYPE(CV_8U, mat.channels()), 255.0 / range, -lo * 255.0 / range);
    return out;
}

} // namespace

PictureFile readPictureFile(const QString& path)
{
    PictureFile result;
    const QFileInfo info(path);
    if (!info.exists()) {
        result.error = QStringLiteral("no such file");
        return result;
    }
    if (!info.isFile() || !info.isReadable()) {
        result.error = QStringLiteral("not a readable file");
        return result;
    }

    cv::Mat mat;
    try {
        mat = cv::imread(QFile::encodeName(path).toStdString(), cv::IMREAD_UNCHANGED);
    } catch (const cv::Exception& e) {
        result.error = QString::fromStdString(e.msg).trimmed();
        return result;
    }
    if (mat.empty()) {
        result.error = QStringLiteral("not a picture OpenCV can read");
        return result;
    }

    const QString original = QStringLiteral("%1 x %2, %3 %4 channel%5")
                                 .arg(mat.cols)
                                 .arg(mat.rows)
                                 .arg(depthName(mat.depth()))
                                 .arg(mat.channels())
                                 .arg(mat.channels() == 1 ? "" : "s");
    if (mat.channels() == 4)
        mat = firstChannels(mat, 3);  // blue, green, red; alpha dropped
    else if (mat.channels() == 2)
        mat = firstChannels(mat, 1);  // grey; alpha dropped
    else if (mat.channels() != 1 && mat.channels() != 3) {
        result.error = QStringLiteral("%1 channels cannot be shown").arg(mat.channels());
        return result;
    }
    if (mat.depth() != CV_8U && mat.depth() != CV_16U)
        mat = stretchToEightBit(mat);
    if (!mat.isContinuous())
        mat = mat.clone();

    result.mat = mat;
    result.describe = original;
    return result;
}
