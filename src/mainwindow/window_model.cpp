#include "mainwindow/window_model.h"

#include <algorithm>

#include "codec/graphic_page.h"
#include "codec/lcd_text.h"

namespace lumidot {

QString LayOutBytes(const QString& spacedHex, const ByteLayout& layout) {
    // The usual layout is the codec's own text; it is laid out at every regeneration and for
    // every message of a file or a long clipboard.
    if (layout.prefix.isEmpty() && layout.suffix.isEmpty() &&
        layout.separator == QLatin1String(" ")) {
        return spacedHex;
    }
    const qsizetype fields = spacedHex.count(QLatin1Char(' ')) + 1;
    QString result(spacedHex.size() - (fields - 1) +
                       fields * (layout.prefix.size() + layout.suffix.size()) +
                       (fields - 1) * layout.separator.size(),
                   Qt::Uninitialized);
    QChar* out = result.data();
    const auto put = [&out](const QString& text) {
        std::copy(text.cbegin(), text.cend(), out);
        out += text.size();
    };
    put(layout.prefix);
    for (QChar c : spacedHex) {
        if (c == QLatin1Char(' ')) {
            put(layout.suffix);
            put(layout.separator);
            put(layout.prefix);
        } else {
            *out++ = c;
        }
    }
    put(layout.suffix);
    return result;
}

WindowModel::WindowModel(std::string codePage) : codePage_(std::move(codePage)) {}

void WindowModel::selectMode(OutputMode mode) {
    setMode(mode);
    regenerate();
}

const QString& WindowModel::pane() const {
    if (regenerated_) {
        pane_ = Build(*regenerated_, codePage_);
        regenerated_.reset();
    }
    return pane_;
}

std::string WindowModel::Message(const Regenerated& output, const std::string& codePage) {
    const auto page = static_cast<std::uint8_t>(output.page);
    switch (output.mode) {
        case OutputMode::Store:
            return MakeGraphicStoreSysEx(output.pixels, page);
        case OutputMode::Display:
            return MakeGraphicDisplaySysEx(page);
        case OutputMode::Text:
            return MakeTextSysEx(output.lcdText.toStdString(), codePage);
        case OutputMode::None:
            break;
    }
    return {};
}

QString WindowModel::Build(const Regenerated& output, const std::string& codePage) {
    const std::string message = Message(output, codePage);
    const QString spacedHex =
        QString::fromLatin1(message.data(), static_cast<qsizetype>(message.size()));
    return output.skipLayout ? spacedHex : LayOutBytes(spacedHex, output.layout);
}

void WindowModel::regenerate() {
    if (mode_ == OutputMode::None) return;
    regenerated_ =
        Regenerated{mode_, pages_.current(), pages_.pixels(), lcdText_, layout_, skipOutputLayout_};
    ++paneVersion_;
    if (messageListener_) messageListener_(MessageBytes(*regenerated_, codePage_));
    if (copyAuto_ && copier_) copier_(pane());
}

void WindowModel::writeOutput(const QString& spacedHex) {
    writePane(skipOutputLayout_ ? spacedHex : LayOutBytes(spacedHex, layout_));
    if (copyAuto_ && copier_) copier_(pane_);
}

ByteArray WindowModel::MessageBytes(const Regenerated& output, const std::string& codePage) {
    // A picture's message is built as bytes straight away: live sending hands one over on
    // every painted cell. Text goes through its hex, where the code page is applied.
    const auto page = static_cast<std::uint8_t>(output.page);
    switch (output.mode) {
        case OutputMode::Store:
            return GraphicStoreMessage(output.pixels, page);
        case OutputMode::Display:
            return GraphicDisplayMessage(page);
        case OutputMode::Text:
        case OutputMode::None:
            break;
    }
    ByteArray bytes;
    HexTextToBytes(Message(output, codePage), bytes);
    return bytes;
}

void WindowModel::writePane(const QString& text) {
    regenerated_.reset();
    pane_ = text;
    ++paneVersion_;
}

void WindowModel::setLayoutText(QString& field, const QString& text) {
    const QString taken = text.left(kLayoutBoxLength);
    if (taken == field) return;
    field = taken;
    regenerate();
}

void WindowModel::setLcdText(const QString& text) {
    const QString taken = text.left(kLcdTextBoxLength);
    if (taken == lcdText_) return;
    lcdText_ = taken;
    lcdTextChanged();
}

void WindowModel::lcdTextChanged() {
    selectMode(OutputMode::Text);
    regenerate();
}

void WindowModel::openPage(int number) {
    if (!pages_.open(number)) return;
    // A page change shows that page's message: the text mode gives way to storing it.
    if (mode_ == OutputMode::Text) selectMode(OutputMode::Store);
    graphicChanged(mode_ == OutputMode::Store);
}

void WindowModel::graphicChanged(bool selectStore) {
    if (selectStore) selectMode(OutputMode::Store);
    regenerate();
}

void WindowModel::paintPixel(int index, bool on) {
    pages_.setPixel(index, on);
    // Even an unchanged pixel regenerates: every stroke ends with the store message shown.
    graphicChanged(true);
}

void WindowModel::editPage(Page (*operation)(const Page&)) {
    pages_.apply(operation);
    graphicChanged(true);
}

void WindowModel::displayNoPage() {
    selectMode(OutputMode::Display);
    // Page 0 shows no page at all. The display mode stays selected, so the next
    // regeneration replaces this with the selected page's display message.
    writeOutput(QString::fromStdString(MakeGraphicDisplaySysEx(0)));
    if (messageListener_) messageListener_(GraphicDisplayMessage(0));
}

}  // namespace lumidot
