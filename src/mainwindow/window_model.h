// What the main window shows and how its handlers change it, without a single widget: the
// pages, the output mode, the LCD text, the byte layout and the output pane's text.
//
// The window is a view of this model. Its handlers forward here and then bring the widgets
// up to date once, so a run of changes that nobody can see (a decoding run of thousands of
// messages, each regenerating the output several times) costs no layout at all. Every
// regeneration still happens here, in the same order as through the widgets, because with
// automatic copying on each one puts its text on the clipboard.
#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "codec/gs_message.h"
#include "pages/page_model.h"

namespace lumidot {

enum class OutputMode { None, Store, Display, Text };

// The texts that stand before each byte, after each byte and between two bytes.
struct ByteLayout {
    QString prefix;
    QString suffix;
    QString separator = QStringLiteral(" ");
};

// Spaced hex text ("F0 41 ... F7") laid out byte by byte: every field between single spaces
// becomes prefix, field, suffix, and the separator goes between two fields.
QString LayOutBytes(const QString& spacedHex, const ByteLayout& layout);

class WindowModel {
public:
    // Longest texts the LCD text box and the three layout boxes take.
    static constexpr int kLcdTextBoxLength = 32;
    static constexpr int kLayoutBoxLength = 5;

    // codePage: the iconv name of the 8-bit character set of the LCD text.
    explicit WindowModel(std::string codePage);

    PageModel& pages() { return pages_; }
    const PageModel& pages() const { return pages_; }
    const std::string& codePage() const { return codePage_; }
    OutputMode mode() const { return mode_; }
    const QString& lcdText() const { return lcdText_; }
    const ByteLayout& layout() const { return layout_; }
    const QString& pane() const;
    // Goes up by one at every write of the pane, whatever was written.
    quint64 paneVersion() const { return paneVersion_; }
    bool copyAuto() const { return copyAuto_; }
    bool skipOutputLayout() const { return skipOutputLayout_; }

    // Receives the pane's text at every automatic copy.
    void setCopier(std::function<void(const QString&)> copier) { copier_ = std::move(copier); }
    // Receives, while set, the message of every regeneration and of "display no page" as
    // bytes: the window's own message, before any layout. Text written into the pane from
    // elsewhere (a decoding result) is not handed over: its messages were regenerated one by
    // one as they were taken over.
    void setMessageListener(std::function<void(ByteArray)> listener) {
        messageListener_ = std::move(listener);
    }
    void setCopyAuto(bool on) { copyAuto_ = on; }
    void setSkipOutputLayout(bool skip) { skipOutputLayout_ = skip; }

    // --- output ---
    // Selects a mode as a click on its button does, which regenerates.
    void selectMode(OutputMode mode);
    // Selects a mode (or none, so that regeneration does nothing) without regenerating.
    void setMode(OutputMode mode) { mode_ = mode; }
    // Builds the message of the selected mode and writes it as output.
    void regenerate();
    // The output writer: lays spacedHex out (unless layout is being skipped), puts it into
    // the pane and, with automatic copying on, copies the pane.
    void writeOutput(const QString& spacedHex);
    // Puts text into the pane as it is: no layout, no copy.
    void writePane(const QString& text);
    // Sets a layout text as its box would take it (at most five characters); a change
    // regenerates.
    void setPrefix(const QString& text) { setLayoutText(layout_.prefix, text); }
    void setSuffix(const QString& text) { setLayoutText(layout_.suffix, text); }
    void setSeparator(const QString& text) { setLayoutText(layout_.separator, text); }

    // --- LCD text ---
    // Sets the text as its box would take it (at most 32 characters); a change runs
    // lcdTextChanged, as the box's change event does.
    void setLcdText(const QString& text);
    // The LCD text changed: the text mode is selected and the output regenerated.
    void lcdTextChanged();

    // --- pages ---
    // Opens another page: its message replaces the text message, and the output follows.
    // Nothing happens for a page that is open already or is not a page.
    void openPage(int number);
    // Takes a whole picture into the open page without regenerating.
    void setPixels(const Page& pixels) { pages_.setPixels(pixels); }
    // After a change of the picture: selects the store mode if asked, then regenerates.
    void graphicChanged(bool selectStore);
    void paintPixel(int index, bool on);
    void editPage(Page (*operation)(const Page&));
    // Selects the display mode and then shows the message that displays no page.
    void displayNoPage();

private:
    // What a regeneration put into the pane, kept as the state that makes it until somebody
    // reads the pane: most regenerations are replaced by the next before anyone looks.
    struct Regenerated {
        OutputMode mode;
        int page;
        Page pixels;
        QString lcdText;
        ByteLayout layout;
        bool skipLayout;
    };
    static std::string Message(const Regenerated& output, const std::string& codePage);
    static QString Build(const Regenerated& output, const std::string& codePage);
    static ByteArray MessageBytes(const Regenerated& output, const std::string& codePage);
    void setLayoutText(QString& field, const QString& text);

    PageModel pages_;
    std::string codePage_;
    OutputMode mode_ = OutputMode::None;
    QString lcdText_;
    ByteLayout layout_;
    mutable QString pane_;
    mutable std::optional<Regenerated> regenerated_;
    quint64 paneVersion_ = 0;
    bool copyAuto_ = false;
    bool skipOutputLayout_ = false;
    std::function<void(const QString&)> copier_;
    std::function<void(ByteArray)> messageListener_;
};

}  // namespace lumidot
