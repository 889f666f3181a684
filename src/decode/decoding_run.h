// One decoding run over the window's model: the clipboard's text shown in the pane while it
// is checked, read in the user's layout, cut into messages, each described and taken over
// into the model, and the cleaned messages, one per line, left in the pane.
#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "decode/hex_digits.h"

namespace lumidot {

class WindowModel;

class DecodingRun {
public:
    explicit DecodingRun(WindowModel& model) : model_(model) {}

    // Remembers the pane's text and shows the clipboard's text there, exactly as read.
    void start(const QString& clipboardText);
    // Reads the text in the model's layout and checks it: Ok when it holds messages.
    HexCheck check();
    // After a failed check the pane gets back the text it had before the run.
    void restorePane();
    // Describes every message in turn. keepGoing is asked every so often; when it answers
    // false the run stops where it is and this returns false. Otherwise the cleaned messages
    // are written as output, without layout, and this returns true.
    bool describeAll(const std::function<bool()>& keepGoing);

    qint32 count() const { return count_; }
    // One numbered explanation line per message, each ending in CR LF.
    const QString& results() const { return results_; }

private:
    WindowModel& model_;
    QString clipboardText_;
    QString savedPane_;
    std::optional<HexDigits> digits_;  // of the clipboard's text, once checked
    QString results_;
    qint32 count_ = 0;
};

}  // namespace lumidot
