// What the two files reach of a window: ten pages, kept in memory. Everything else the
// describer does with a line of memory.txt is dropped. Standard C++, for the storage tests
// and the storage fuzzer alike.
#pragma once

#include <array>
#include <cstdlib>
#include <string>

#include "codec/describer.h"
#include "codec/graphic_page.h"

namespace lumidot::testing {

class TenPages : public SysExTarget {
public:
    std::array<Page, kLastPage> pages{};

    void setSysExOutText(const std::string&) override {}
    void setLcdText(const std::string&) override {}
    std::string lcdText() const override { return {}; }
    void txtTextIn_Change() override {}
    void SetPageNum(std::uint8_t page) override { page_ = page; }
    void SetFDPixelColAll(const Page& pixels) override {
        // The describer names only pages 1 to 10; anything else is a fault to be found.
        if (page_ < kFirstPage || page_ > kLastPage) std::abort();
        pages[static_cast<std::size_t>(page_ - 1)] = pixels;
    }
    void selectStoreMode() override {}
    void selectDisplayMode() override {}
    void AutoSetSysExText() override {}
    void cmdFDPageDisplay_Click() override {}

private:
    int page_ = 1;
};

}  // namespace lumidot::testing
