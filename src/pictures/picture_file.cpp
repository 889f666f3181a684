#include "pictures/picture_file.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QStringList>

namespace lumidot {
namespace {

// Qt refuses to decode beyond its allocation limit; the limit matches the largest picture
// in 32 bits per pixel, for formats whose header does not give the size.
constexpr int kAllocationLimitMegabytes = int(kMaxPicturePixels * 4 / (1024 * 1024)) + 1;

PictureFrames Problem(const QString& problem) {
    PictureFrames none;
    none.problem = problem;
    return none;
}

PictureFrames Read(QIODevice& device, int maxFrames) {
    QImageReader::setAllocationLimit(kAllocationLimitMegabytes);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    // Photos from cameras lie on their side unless their orientation tag is followed.
    reader.setAutoTransform(true);
    if (!reader.canRead()) {
        return Problem(
            QStringLiteral("It is not a picture in a format Lumidot can read "
                           "(PNG, BMP, GIF, JPEG, TIFF, PBM, PGM, PPM, XPM, ICO and "
                           "others)."));
    }
    // GIF and TIFF know their number of frames from the file's structure, without decoding.
    // Counted before the size is asked: Qt's TIFF reader loses count of its pages after.
    const int count = reader.imageCount();
    const QSize size = reader.size();
    if (size.isValid() && qint64(size.width()) * size.height() > kMaxPicturePixels) {
        return Problem(QStringLiteral("The picture is %1 x %2 pixels; pictures of up to 100 "
                                      "megapixels can be imported.")
                           .arg(size.width())
                           .arg(size.height()));
    }

    PictureFrames read;
    // Frames are decoded up to the pixels of one largest picture in all, so that ten pages
    // of a huge multi-page file cannot take ten times the memory; the rest are only counted.
    qint64 pixels = 0;
    maxFrames = std::max(1, maxFrames);
    while (int(read.frames.size()) < maxFrames && (count <= 0 || int(read.frames.size()) < count) &&
           pixels <= kMaxPicturePixels) {
        // A TIFF reader stays on its page until told to move on; a GIF reader moves on by
        // itself with every frame it reads, and says when it has no more.
        if (!read.frames.empty() && !reader.jumpToNextImage() && !reader.canRead()) break;
        QImage frame;
        if (!reader.read(&frame)) break;
        pixels += qint64(frame.width()) * frame.height();
        read.frames.push_back(std::move(frame));
    }
    if (read.frames.empty()) {
        return Problem(QStringLiteral("The picture is damaged or too large to decode (%1).")
                           .arg(reader.errorString()));
    }
    read.total = std::max(count, int(read.frames.size()));
    return read;
}

}  // namespace

PictureFrames ReadPictureFile(const QString& path, int maxFrames) {
    const QFileInfo info(path);
    if (!info.exists()) return Problem(QStringLiteral("The file does not exist."));
    if (info.isDir()) return Problem(QStringLiteral("It is a folder, not a file."));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Problem(QStringLiteral("The file cannot be read: %1.").arg(file.errorString()));
    }
    if (file.size() == 0) return Problem(QStringLiteral("The file is empty."));
    return Read(file, maxFrames);
}

PictureFrames ReadPictureData(const QByteArray& bytes, int maxFrames) {
    if (bytes.isEmpty()) return Problem(QStringLiteral("There is no picture data."));
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return Read(buffer, maxFrames);
}

bool LooksLikePicture(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    return reader.canRead();
}

bool IsPictureFile(const QString& path) {
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    return reader.canRead();
}

bool HasPictureSuffix(const QString& path) {
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toLatin1();
    return !suffix.isEmpty() && QImageReader::supportedImageFormats().contains(suffix);
}

QString PictureFileFilter() {
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats()) {
        patterns << QStringLiteral("*.") + QString::fromLatin1(format);
    }
    return QStringLiteral("Pictures (%1);;All files (*)").arg(patterns.join(QLatin1Char(' ')));
}

}  // namespace lumidot
