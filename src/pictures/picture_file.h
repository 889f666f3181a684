// Reading pictures from files and from bytes (standard input, dropped or pasted data) with
// Qt's image readers, safely: a file that is empty, not a picture, damaged or enormous gives
// a reason in words instead of a picture, and nothing is decoded before its size is known.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <vector>

class QIODevice;

namespace lumidot {

// The largest picture read: 100 megapixels, judged from the file's header before decoding.
constexpr qint64 kMaxPicturePixels = 100'000'000;

struct PictureFrames {
    std::vector<QImage> frames;  // the first frames, as many as were asked for at most
    int total = 0;               // every frame in the file, when its format tells
    QString problem;             // why there is no picture: one sentence; empty when read

    bool ok() const { return problem.isEmpty(); }
};

// Reads the first frames of the picture file at path (at least one, at most maxFrames),
// and counts all of them.
PictureFrames ReadPictureFile(const QString& path, int maxFrames);
// The same for a picture held in memory.
PictureFrames ReadPictureData(const QByteArray& bytes, int maxFrames);

// True when the bytes, or the file at path, start like a picture in a format Qt can read.
// Decodes nothing.
bool LooksLikePicture(const QByteArray& bytes);
bool IsPictureFile(const QString& path);
// True when the file name ends in the suffix of a picture format Qt reads (.png, .gif, ...).
bool HasPictureSuffix(const QString& path);

// The file dialogs' filter: every picture format Qt reads, then any file.
QString PictureFileFilter();

}  // namespace lumidot
