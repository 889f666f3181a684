#include "mainwindow/clipboard_access.h"

namespace lumidot {
namespace {

// Makes the first attempt, then retries after a pause while it fails, at most
// kClipboardAttempts in all; after the last failure the user is told once.
template <typename Attempt>
void WithRetries(Platform& platform, QWidget* parent, Attempt attempt, const QString& title,
                 const QString& firstLine) {
    int retries = 0;
    bool ok = attempt();
    while (!ok && retries < kClipboardAttempts - 1) {
        platform.sleeper.sleepMs(kClipboardPauseMs);
        ++retries;
        ok = attempt();
    }
    if (!ok) {
        platform.prompts.showMessage(
            parent, title, firstLine + QStringLiteral("\r\n(tried %1 times)").arg(retries + 1),
            Prompts::Icon::Critical, Prompts::Buttons::Ok, Prompts::Answer::Ok);
    }
}

}  // namespace

QString GetClipboardText(Platform& platform, QWidget* parent) {
    QString result;
    WithRetries(
        platform, parent,
        [&] {
            QString text;
            if (!platform.clipboard.getText(text)) return false;
            result = text;
            return true;
        },
        QStringLiteral("Error reading from clipboard!"),
        QStringLiteral("Failed to open clipboard for reading from"));
    return result;
}

void SetClipboardText(Platform& platform, const QString& text, QWidget* parent) {
    WithRetries(
        platform, parent,
        [&] {
            // The text is set even when clearing failed; the attempt fails if either did.
            const bool cleared = platform.clipboard.clear();
            const bool set = platform.clipboard.setText(text);
            return cleared && set;
        },
        QStringLiteral("Error writing to clipboard!"),
        QStringLiteral("Failed to open clipboard for writing to"));
}

}  // namespace lumidot
