// Picture files made by the tests themselves: PNG through Qt's writer, and the animated GIF
// and multi-page TIFF that Qt can read but not write, built byte by byte here.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QString>
#include <QtEndian>
#include <array>
#include <vector>

namespace lumidot::testing {

inline QByteArray Encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.write(image);
    return bytes;
}

inline bool WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A black and white picture: pixel (x, y) black where dark(x, y) is true.
template <typename Dark>
QImage BlackOnWhite(int width, int height, Dark dark) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) image.setPixel(x, y, dark(x, y) ? 0xff000000 : 0xffffffff);
    }
    return image;
}

namespace detail {

inline void Append16(QByteArray& bytes, quint16 value) {
    bytes.append(char(value & 0xff)).append(char(value >> 8));
}
inline void Append32(QByteArray& bytes, quint32 value) {
    Append16(bytes, quint16(value & 0xffff));
    Append16(bytes, quint16(value >> 16));
}

// LZW data that a GIF decoder reads without ever growing its code size: a clear code before
// every two pixels keeps every code 3 bits wide.
inline QByteArray UncompressedLzw(const std::vector<bool>& black) {
    constexpr int kClear = 4, kEnd = 5, kBits = 3;
    QByteArray packed;
    quint32 buffer = 0;
    int used = 0;
    const auto put = [&](int code) {
        buffer |= quint32(code) << used;
        used += kBits;
        while (used >= 8) {
            packed.append(char(buffer & 0xff));
            buffer >>= 8;
            used -= 8;
        }
    };
    for (std::size_t i = 0; i < black.size(); ++i) {
        if (i % 2 == 0) put(kClear);
        put(black[i] ? 1 : 0);
    }
    put(kEnd);
    if (used > 0) packed.append(char(buffer & 0xff));
    QByteArray blocks;
    for (qsizetype at = 0; at < packed.size(); at += 255) {
        const QByteArray block = packed.mid(at, 255);
        blocks.append(char(block.size())).append(block);
    }
    return blocks.append('\0');
}

}  // namespace detail

// An animated GIF, one frame per picture (all of one size), white and black only.
inline QByteArray AnimatedGif(const std::vector<QImage>& frames) {
    using namespace detail;
    const int width = frames.at(0).width(), height = frames.at(0).height();
    QByteArray gif("GIF89a");
    Append16(gif, quint16(width));
    Append16(gif, quint16(height));
    gif.append(char(0x80)).append('\0').append('\0');  // a global table of two colours
    gif.append("\xff\xff\xff\x00\x00\x00", 6);          // 0 white, 1 black
    gif.append("\x21\xff\x0bNETSCAPE2.0\x03\x01\x00\x00\x00", 19);  // loops for ever
    for (const QImage& frame : frames) {
        gif.append("\x21\xf9\x04\x04\x0a\x00\x00\x00", 8);  // a tenth of a second each
        gif.append(',');
        Append16(gif, 0);
        Append16(gif, 0);
        Append16(gif, quint16(width));
        Append16(gif, quint16(height));
        gif.append('\0').append('\2');  // no local colours; codes start at 2 bits
        std::vector<bool> black;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) black.push_back(qGray(frame.pixel(x, y)) < 128);
        }
        gif.append(UncompressedLzw(black));
    }
    return gif.append(';');
}

// A TIFF file with one uncompressed 8-bit grey page per picture.
inline QByteArray MultiPageTiff(const std::vector<QImage>& pages) {
    using namespace detail;
    QByteArray tiff("II*\0", 4);
    Append32(tiff, 0);  // where the first page's directory is, filled in below
    qsizetype link = 4;
    for (const QImage& page : pages) {
        const QImage grey = page.convertToFormat(QImage::Format_Grayscale8);
        const quint32 dataAt = quint32(tiff.size());
        for (int y = 0; y < grey.height(); ++y) {
            tiff.append(reinterpret_cast<const char*>(grey.constScanLine(y)), grey.width());
        }
        if (tiff.size() % 2) tiff.append('\0');
        qToLittleEndian(quint32(tiff.size()), tiff.data() + link);
        const quint32 w = quint32(grey.width()), h = quint32(grey.height());
        const std::vector<std::array<quint32, 3>> entries = {
            // tag, type (3 short, 4 long), value
            {256, 4, w}, {257, 4, h}, {258, 3, 8}, {259, 3, 1}, {262, 3, 1},
            {273, 4, dataAt}, {277, 3, 1}, {278, 4, h}, {279, 4, w * h}};
        Append16(tiff, quint16(entries.size()));
        for (const auto& [tag, type, value] : entries) {
            Append16(tiff, quint16(tag));
            Append16(tiff, quint16(type));
            Append32(tiff, 1);
            Append32(tiff, value);
        }
        link = tiff.size();
        Append32(tiff, 0);  // no next page, unless another follows
    }
    return tiff;
}

namespace detail {

inline QByteArray PngChunk(const char* type, const QByteArray& data) {
    const QByteArray body = QByteArray(type, 4) + data;
    quint32 crc = 0xffffffff;
    for (char byte : body) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xedb88320 & (0 - (crc & 1)));
    }
    char number[4];
    qToBigEndian(quint32(data.size()), number);
    QByteArray chunk(number, 4);
    chunk.append(body);
    qToBigEndian(~crc, number);
    return chunk.append(number, 4);
}

}  // namespace detail

// A well-formed PNG file that announces a picture of width x height pixels and holds a few
// bytes of picture data: what a hostile file looks like to a reader that trusts the header.
inline QByteArray PngAnnouncing(quint32 width, quint32 height) {
    char size[8];
    qToBigEndian(width, size);
    qToBigEndian(height, size + 4);
    QByteArray header(size, 8);
    header.append("\x08\x02\x00\x00\x00", 5);  // 8-bit RGB
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + detail::PngChunk("IHDR", header) +
           detail::PngChunk("IDAT", QByteArray("\x78\x9c\x63\x00\x00\x00\x01\x00\x01", 9)) +
           detail::PngChunk("IEND", {});
}

}  // namespace lumidot::testing
