#include "decode/decoding_run.h"

#include "decode/decode_text.h"
#include "decode/message_list.h"
#include "mainwindow/window_model.h"

namespace lumidot {
namespace {

// How many messages are described between two questions to keepGoing.
constexpr int kMessagesPerSlice = 256;
// Characters of the longest result line of a well-formed message, the label included.
constexpr qsizetype kLongestUsualResultLine = 90;

}  // namespace

void DecodingRun::start(const QString& clipboardText) {
    clipboardText_ = clipboardText;
    savedPane_ = model_.pane();
    model_.writePane(clipboardText);
}

HexCheck DecodingRun::check() {
    const ByteLayout& layout = model_.layout();
    HexCheck check = HexCheck::Ok;
    digits_ =
        ReadHexDigitsOf(clipboardText_, layout.prefix, layout.suffix, layout.separator, &check);
    clipboardText_.clear();
    // Only a failed run puts the old text back; a big one need not be kept any longer.
    if (check == HexCheck::Ok) savedPane_.clear();
    return check;
}

void DecodingRun::restorePane() {
    model_.writePane(savedPane_);
}

bool DecodingRun::describeAll(const std::function<bool()>& keepGoing) {
    results_.clear();
    count_ = 0;
    // Room for both texts from the start: a text that grows by doubling holds its old and
    // its new copy at once, and with tens of thousands of messages these are megabytes.
    // Room that a text does not fill costs no memory until it is written.
    qsizetype messageCount = 0;
    qsizetype digitCount = 0;
    MessageReader counter(*digits_);
    for (std::string message; counter.next(message); ++messageCount) digitCount += message.size();
    const ByteLayout& layout = model_.layout();
    QString cleaned;
    cleaned.reserve(
        (digitCount / 2 + messageCount) *
            (3 + layout.prefix.size() + layout.suffix.size() + layout.separator.size()) +
        messageCount * 2);
    results_.reserve(messageCount * kLongestUsualResultLine);
    MessageReader messages(*digits_);
    for (std::string hex; messages.next(hex);) {
        ++count_;
        const DescribedMessage described = DescribeMessage(model_, hex);
        AppendNumberedLine(results_, count_, described.description);
        cleaned += described.cleaned;
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
