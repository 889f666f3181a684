// A page drawn as the LCD shows it, smaller than the pixel grid and without any input: the
// result side of the picture import.
#pragma once

#include <QWidget>

#include "codec/graphic_page.h"

namespace lumidot {

class PagePreview : public QWidget {
    Q_OBJECT
public:
    static constexpr int kCell = 10;  // each dot, with a gap of one pixel around it
    static constexpr int kSide = kPageSide * (kCell + 1) + 1;

    explicit PagePreview(QWidget* parent = nullptr);

    void setPage(const Page& page);
    const Page& page() const { return page_; }

    QSize sizeHint() const override { return {kSide, kSide}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Page page_{};
};

}  // namespace lumidot
