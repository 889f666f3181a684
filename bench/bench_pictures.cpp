// Pictures and undo: what moving a control of the import dialog costs with a large photo
// open in it, and what undoing and redoing a long stroke of painting costs.
#include <QDialog>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QRadioButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QUndoStack>
#include <cstdio>
#include <random>

#include "editor/edit_history.h"
#include "editor/grid_input.h"
#include "editor/picture_import_dialog.h"
#include "mainwindow/main_form.h"
#include "measure.h"
#include "pictures/picture_file.h"

namespace {

// A 4000 x 3000 picture with the features of a photo: smooth light, edges and grain that a
// JPEG encoder cannot flatten.
QImage Photo() {
    QImage photo(4000, 3000, QImage::Format_RGB32);
    QPainter painter(&photo);
    QLinearGradient sky(0, 0, 4000, 3000);
    sky.setColorAt(0, QColor(30, 60, 120));
    sky.setColorAt(1, QColor(240, 200, 150));
    painter.fillRect(photo.rect(), sky);
    painter.setBrush(QColor(20, 20, 20));
    painter.drawEllipse(QPoint(2000, 1500), 900, 700);
    painter.end();
    std::mt19937 random(7);
    std::uniform_int_distribution<int> grain(-12, 12);
    for (int y = 0; y < photo.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(photo.scanLine(y));
        for (int x = 0; x < photo.width(); ++x) {
            const int g = grain(random);
            line[x] = qRgb(qBound(0, qRed(line[x]) + g, 255), qBound(0, qGreen(line[x]) + g, 255),
                           qBound(0, qBlue(line[x]) + g, 255));
        }
    }
    return photo;
}

}  // namespace

void RunPictureBenchmarks(lumidot::Platform& platform, const QString& folder) {
    std::printf("\nPictures and undo\n");
    const QString path = folder + QStringLiteral("/photo.jpg");
    if (!Photo().save(path, "jpg", 90)) {
        std::printf("could not write the photo\n");
        return;
    }
    QElapsedTimer timer;
    timer.start();
    const lumidot::PictureFrames read = lumidot::ReadPictureFile(path, 10);
    std::printf("%-58s %4d run    %8.2f ms\n", "4000 x 3000 JPEG photo read (once per import)", 1,
                timer.nsecsElapsed() / 1e6);
    if (!read.ok()) {
        std::printf("the photo could not be read: %s\n", qPrintable(read.problem));
        return;
    }
    timer.start();
    lumidot::PictureImportDialog dialog(nullptr, read.frames, read.total,
                                        QStringLiteral("photo.jpg"), 1, {});
    std::printf("%-58s %4d run    %8.2f ms\n", "import dialog opened on it (reduced once)", 1,
                timer.nsecsElapsed() / 1e6);
    auto* slider = dialog.findChild<QSlider*>(QStringLiteral("thresholdSlider"));
    Print("import preview updated after a threshold slider move", 500,
          Measure(500, [&](int i) { slider->setValue(i % 2 ? 90 : 170); }));
    // A change of fit scales the reduced photo again; dithering diffuses over it.
    auto* margins = dialog.findChild<QRadioButton*>(QStringLiteral("fitMargins"));
    auto* crop = dialog.findChild<QRadioButton*>(QStringLiteral("fitCrop"));
    auto* dither = dialog.findChild<QRadioButton*>(QStringLiteral("toneDither"));
    auto* threshold = dialog.findChild<QRadioButton*>(QStringLiteral("toneThreshold"));
    Print("import preview updated after a change of fit", 200,
          Measure(200, [&](int i) { (i % 2 ? margins : crop)->setChecked(true); }));
    Print("import preview updated after dithering on or off", 200,
          Measure(200, [&](int i) { (i % 2 ? threshold : dither)->setChecked(true); }));
    dialog.show();
    Print("slider move with the dialog painted again", 200, Measure(200, [&](int i) {
              slider->setValue(i % 2 ? 90 : 170);
              dialog.grab();
          }));
    dialog.hide();

    lumidot::MainForm window(platform, folder);
    window.Form_Load();
    lumidot::EditHistory& history = window.history();
    // One stroke over every cell of the page: 256 cells turned on, one step.
    for (int cell = 0; cell < 256; ++cell) window.gridInput().FDPixelMouseMove(cell, 0, 1);
    history.endGesture();
    lumidot::Page allOn{};
    allOn.fill(true);
    if (history.stack().count() != 1 || window.FDPixels() != allOn) {
        std::printf("the stroke was not recorded as one step\n");
        return;
    }
    Print("undo or redo of a 256-cell stroke", 2000, Measure(2000, [&](int i) {
              if (i % 2 == 0) {
                  history.undo();
              } else {
                  history.redo();
              }
          }));
    window.hide();
}
