// The ten picture pages and the one being edited, without any window.
//
// The open page is edited as a working copy; the memory keeps every page as it was last
// stored. Opening another page first stores the working copy, so the memory's copy of the
// open page may be behind the pixels shown until then, exactly as the editor has always
// worked. Copying to a page writes the memory only.
#pragma once

#include <array>
#include <functional>

#include "codec/graphic_page.h"

namespace lumidot {

using Pages = std::array<Page, kLastPage>;

bool IsPageNumber(int page);

class PageModel {
public:
    // What changed, for a view that repaints only what it must.
    enum class Change {
        Pixel,     // one pixel of the open page (index given)
        Pixels,    // the open page's pixels as a whole
        OpenPage,  // another page was opened
        Memory,    // a stored page that is not shown changed (page given)
    };
    using Listener = std::function<void(Change, int)>;

    int current() const { return current_; }
    const Page& pixels() const { return pixels_; }
    // Page 1 to 10 as the user sees it: the open page's working copy, the others as stored.
    const Page& page(int number) const;
    // Page 1 to 10 as the memory holds it (for the open page, as it was last stored).
    const Page& stored(int number) const { return memory_[number - 1]; }
    // All ten pages as the user sees them, ready to be saved.
    Pages all() const;

    // Stores the open page and opens page number; false (and nothing changes) when number is
    // not a page or is already open.
    bool open(int number);
    void setPixel(int index, bool on);
    void setPixels(const Page& pixels);
    // A whole-page operation on the open page (clear, invert, a shift).
    void apply(Page (*operation)(const Page&));
    // Stores the open page's pixels as page number; the open page itself stays as it is.
    void copyTo(int number);
    // Sets page number as the user sees it: the open page's pixels, or a stored page.
    void setPage(int number, const Page& pixels);
    // Puts back all ten pages and the open page at once, as an undo does: pages[n - 1] is
    // page n as the user sees it, and page current is opened without storing anything.
    void restore(const Pages& pages, int current);

    void setListener(Listener listener) { listener_ = std::move(listener); }

private:
    void notify(Change change, int detail) const {
        if (listener_) listener_(change, detail);
    }

    Pages memory_{};
    Page pixels_{};
    int current_ = kFirstPage;
    Listener listener_;
};

}  // namespace lumidot
