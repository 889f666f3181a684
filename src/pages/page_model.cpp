#include "pages/page_model.h"

namespace lumidot {

bool IsPageNumber(int page) {
    return page >= kFirstPage && page <= kLastPage;
}

const Page& PageModel::page(int number) const {
    return number == current_ ? pixels_ : memory_[number - 1];
}

Pages PageModel::all() const {
    Pages pages = memory_;
    pages[current_ - 1] = pixels_;
    return pages;
}

bool PageModel::open(int number) {
    if (!IsPageNumber(number) || number == current_) return false;
    memory_[current_ - 1] = pixels_;
    current_ = number;
    pixels_ = memory_[current_ - 1];
    notify(Change::OpenPage, number);
    return true;
}

void PageModel::setPixel(int index, bool on) {
    if (index < 0 || index >= kPagePixels) return;
    pixels_[index] = on;
    notify(Change::Pixel, index);
}

void PageModel::setPixels(const Page& pixels) {
    pixels_ = pixels;
    notify(Change::Pixels, current_);
}

void PageModel::apply(Page (*operation)(const Page&)) {
    setPixels(operation(pixels_));
}

void PageModel::copyTo(int number) {
    if (!IsPageNumber(number)) return;
    memory_[number - 1] = pixels_;
    notify(Change::Memory, number);
}

void PageModel::setPage(int number, const Page& pixels) {
    if (!IsPageNumber(number)) return;
    if (number == current_) {
        setPixels(pixels);
        return;
    }
    memory_[number - 1] = pixels;
    notify(Change::Memory, number);
}

void PageModel::restore(const Pages& pages, int current) {
    if (!IsPageNumber(current)) return;
    memory_ = pages;
    const bool opens = current != current_;
    current_ = current;
    pixels_ = memory_[current_ - 1];
    notify(opens ? Change::OpenPage : Change::Pixels, current_);
}

}  // namespace lumidot
