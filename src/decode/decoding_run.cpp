#include "decode/decoding_run.h"

#include <algorithm>

#include "mainwindow/model_target.h"
#include "mainwindow/window_model.h"

namespace lumidot {
namespace {

// How many messages are described between two questions to keepGoing.
constexpr int kMessagesPerSlice = 256;

}  // namespace

void DecodingRun::start(const QString& clipboardText) {
    clipboardText_ = clipboardText;
    savedPane_ = model_.pane();
    model_.writePane(clipboardText);
}

HexCheck DecodingRun::check() {
    const ByteLayout& layout = model_.layout();
    digits_ = ReadHexDigits(clipboardText_, layout.prefix, layout.suffix, layout.separator);
    clipboardText_.clear();
    return CheckHexDigits(digits_);
}

void DecodingRun::restorePane() { model_.writePane(savedPane_); }

bool DecodingRun::describeAll(const std::function<bool()>& keepGoing) {
    results_.clear();
    count_ = 0;
    QString cleaned;
    MessageCutter messages(digits_);
    std::string hex;
    for (QStringView message; messages.next(message);) {
        ++count_;
        const quint64 paneBefore = model_.paneVersion();
        // Checked hex digits: one byte a character.
        hex.resize(static_cast<std::size_t>(message.size()));
        std::transform(message.begin(), message.end(), hex.begin(),
                       [](QChar c) { return static_cast<char>(c.unicode()); });
        const std::string line = DescribeInto(model_, hex);
        AppendNumberedLine(results_, count_, line);
        if (model_.paneVersion() != paneBefore) {
            cleaned += model_.pane();
        } else {
            // The message changed nothing in the pane (an invalid page, a duration): it
            // stands in the result as it came, so every message keeps its own line.
            QString bytes = SpaceHexPairs(message.toString());
            bytes.chop(1);
            cleaned += bytes.isEmpty() ? QStringLiteral("F0") : QStringLiteral("F0 ") + bytes;
        }
        cleaned += QStringLiteral("\r\n");
        if (count_ % kMessagesPerSlice == 0 && !keepGoing()) return false;
    }
    cleaned.chop(2);

    model_.setSkipOutputLayout(true);
    model_.writeOutput(cleaned);
    model_.setSkipOutputLayout(false);
    return true;
}

}  // namespace lumidot
