// Lets the message describer take a message over into the window's model: the text, the
// pictures, the page and the output mode, exactly as through the window's own handlers.
#pragma once

#include "codec/describer.h"
#include "mainwindow/window_model.h"

namespace lumidot {

class ModelTarget final : public SysExTarget {
public:
    explicit ModelTarget(WindowModel& model) : model_(model) {}

    void setSysExOutText(const std::string& text) override;
    void setLcdText(const std::string& text) override;
    std::string lcdText() const override;
    void txtTextIn_Change() override { model_.lcdTextChanged(); }
    void SetPageNum(std::uint8_t page) override { model_.openPage(page); }
    void SetFDPixelColAll(const Page& pixels) override { model_.setPixels(pixels); }
    void selectStoreMode() override { model_.selectMode(OutputMode::Store); }
    void selectDisplayMode() override { model_.selectMode(OutputMode::Display); }
    void AutoSetSysExText() override { model_.regenerate(); }
    void cmdFDPageDisplay_Click() override { model_.displayNoPage(); }

private:
    WindowModel& model_;
};

// Describes one message (hex text) and applies it to the model; returns the description.
std::string DescribeInto(WindowModel& model, const std::string& hexText);

}  // namespace lumidot
