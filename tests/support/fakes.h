// Fakes for the program's seams: message boxes and file dialogs answered as scripted, a
// clipboard that fails on demand, and a sleeper that only counts.
#pragma once

#include <QDialog>
#include <QString>
#include <deque>
#include <functional>
#include <vector>

#include "mainwindow/platform.h"

namespace lumidot::testing {

struct ShownMessage {
    QString title;
    QString prompt;
    Prompts::Icon icon;
    Prompts::Buttons buttons;
    Prompts::Answer defaultAnswer;
};

class FakePrompts : public Prompts {
public:
    std::vector<ShownMessage> shown;
    std::deque<Answer> answers;  // next answers; Ok / the default when empty
    // Runs while a modal dialog is "open"; it decides how the dialog ends.
    std::function<void(QDialog&)> onModal;
    int modalRuns = 0;

    Answer showMessage(QWidget*, const QString& title, const QString& prompt, Icon icon,
                       Buttons buttons, Answer defaultAnswer) override {
        shown.push_back({title, prompt, icon, buttons, defaultAnswer});
        if (answers.empty()) return buttons == Buttons::Ok ? Answer::Ok : defaultAnswer;
        Answer a = answers.front();
        answers.pop_front();
        return a;
    }
    int runModal(QDialog& dialog) override;
};

class FakeClipboard : public Clipboard {
public:
    QString text;
    bool holdsText = true;
    int failuresLeft = 0;  // calls that fail before the clipboard is free again
    int getCalls = 0, clearCalls = 0, setCalls = 0;
    std::vector<QString> written;  // every text set successfully

    bool getText(QString& out) override {
        ++getCalls;
        if (failNow()) return false;
        out = holdsText ? text : QString();
        return true;
    }
    bool clear() override {
        ++clearCalls;
        if (failNow()) return false;
        text.clear();
        return true;
    }
    bool setText(const QString& t) override {
        ++setCalls;
        if (failNow()) return false;
        text = t;
        holdsText = true;
        written.push_back(t);
        return true;
    }

private:
    bool failNow() {
        if (failuresLeft <= 0) return false;
        --failuresLeft;
        return true;
    }
};

class CountingSleeper : public Sleeper {
public:
    std::vector<int> sleeps;
    void sleepMs(int ms) override { sleeps.push_back(ms); }
};

// File dialogs answered as scripted: each question takes the next path (empty text is a
// cancel, and so is a question with no answer left).
class FakeFileDialogs : public FileDialogs {
public:
    std::vector<FileQuestion> asked;
    std::deque<QString> paths;

    QString askPath(QWidget*, const FileQuestion& question) override {
        asked.push_back(question);
        if (paths.empty()) return {};
        QString path = paths.front();
        paths.pop_front();
        return path;
    }
};

// The fakes together, ready to hand to the program as its platform.
struct FakePlatform {
    FakePrompts prompts;
    FakeClipboard clipboard;
    CountingSleeper sleeper;
    FakeFileDialogs files;
    Platform platform{prompts, clipboard, sleeper, files};
};

}  // namespace lumidot::testing
