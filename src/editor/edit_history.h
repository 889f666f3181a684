// Undo and redo for every change to the pages: each user action that changes any page is one
// step holding those pages before and after it, and which page was open. Steps are named for
// the Edit menu ("Undo Paint", "Undo Copy to page 4").
//
// A step is either scoped (an EditGroup around the code of one action: a button, a decoding
// run, an import) or a gesture that spans many events: a stroke of painting lasts from the
// first cell painted until the Shift or Ctrl key or the mouse button is released, a drag on
// the handle until the button is released. A step that changed no page is not recorded.
#pragma once

#include <QObject>
#include <QString>
#include <QUndoStack>
#include <functional>

#include "mainwindow/window_model.h"

class QAction;
class QKeyEvent;
class QWidget;

namespace lumidot {

class EditHistory : public QObject {
    Q_OBJECT
public:
    // Enough for a long session of painting; a step holds only the pages it changed.
    static constexpr int kUndoLimit = 1000;

    // changed: runs after an undo or redo has changed the model, to bring the view up to date.
    EditHistory(WindowModel& model, std::function<void()> changed);
    ~EditHistory() override;

    // Watches window's keyboard and mouse: the releases that end a gesture, and the undo and
    // redo keys, which belong to the history wherever the focus is in the window.
    void watch(QWidget* window);

    QUndoStack& stack() { return stack_; }
    // Edit > Undo and Redo, named after the step they would undo or redo.
    QAction* undoAction() const { return undoAction_; }
    QAction* redoAction() const { return redoAction_; }
    // Extra shortcuts that, like undo and redo, take back a stroke made only by pressing their
    // Shift or Ctrl over a cell (say Ctrl+I).
    void addShortcutKeys(const QKeySequence& keys) { otherKeys_.append(keys); }

    void undo();
    void redo();

    // A cell is about to be painted. byKey: by the Shift or Ctrl key going down, with the
    // pointer resting on the cell; such a stroke is taken back when its key turns out to be
    // the start of a shortcut.
    void painting(bool byKey);
    // The drag handle is about to shift the picture.
    void dragging();
    // Ends a stroke or drag under way, recording it.
    void endGesture();

    // Scoped steps; see EditGroup. Steps opened inside another become part of it.
    void begin(const QString& name);
    void end();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Gesture { None, Paint, Drag };
    void open(const QString& name);
    void record();
    void startGesture(Gesture gesture, const QString& name);
    // Puts back the pages as they were before a stroke made only by Shift or Ctrl going down.
    void takeBackKeyStroke();
    bool inWindow(QObject* watched) const;
    bool isUndoOrRedo(const QKeyEvent& key) const;
    void showStep();

    WindowModel& model_;
    std::function<void()> changed_;
    QUndoStack stack_;
    QAction* undoAction_;
    QAction* redoAction_;
    QList<QKeySequence> otherKeys_;
    QWidget* window_ = nullptr;

    int depth_ = 0;  // scoped steps open
    Gesture gesture_ = Gesture::None;
    bool keyStroke_ = false;  // the stroke under way was painted by keys alone
    QString name_;
    Pages before_{};
    int currentBefore_ = kFirstPage;
};

// One step around the code of one action:
//   EditGroup step(window.history(), QStringLiteral("Open file"));
// Everything that changes pages until the group ends (at the end of its scope or at finish)
// is undone and redone as one.
class EditGroup {
public:
    EditGroup(EditHistory& history, const QString& name) : history_(&history) {
        history.begin(name);
    }
    ~EditGroup() { finish(); }
    void finish() {
        if (history_ != nullptr) history_->end();
        history_ = nullptr;
    }
    EditGroup(const EditGroup&) = delete;
    EditGroup& operator=(const EditGroup&) = delete;

private:
    EditHistory* history_;
};

}  // namespace lumidot
