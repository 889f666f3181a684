#include "editor/edit_history.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QUndoCommand>
#include <QWidget>
#include <vector>

namespace lumidot {
namespace {

const QList<QKeySequence> kUndoKeys = {QKeySequence(Qt::CTRL | Qt::Key_Z)};
const QList<QKeySequence> kRedoKeys = {QKeySequence(Qt::CTRL | Qt::Key_Y),
                                       QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)};

struct PageChange {
    int page;
    Page before;
    Page after;
};

// The pages one step changed, as they were before and after it, and the page open then.
class PagesStep : public QUndoCommand {
public:
    using Apply = std::function<void(const std::vector<std::pair<int, const Page*>>&, int)>;

    PagesStep(const QString& name, std::vector<PageChange> changes, int currentBefore,
              int currentAfter, Apply apply)
        : QUndoCommand(name),
          changes_(std::move(changes)),
          currentBefore_(currentBefore),
          currentAfter_(currentAfter),
          apply_(std::move(apply)) {}

    void undo() override { put(&PageChange::before, currentBefore_); }
    void redo() override {
        // Pushed after the action itself has changed the pages.
        if (pushed_) {
            pushed_ = false;
            return;
        }
        put(&PageChange::after, currentAfter_);
    }

private:
    // Brings back one side of the step and opens a page it changed, so that the user sees
    // what came back: the page that was open then when the step changed it, otherwise the
    // first page the step changed (after "Copy to page 4" from page 3, page 4).
    void put(Page PageChange::*side, int current) {
        std::vector<std::pair<int, const Page*>> pages;
        bool currentChanged = false;
        for (const PageChange& change : changes_) {
            pages.push_back({change.page, &(change.*side)});
            currentChanged = currentChanged || change.page == current;
        }
        apply_(pages, currentChanged ? current : changes_.front().page);
    }

    std::vector<PageChange> changes_;
    int currentBefore_;
    int currentAfter_;
    Apply apply_;
    bool pushed_ = true;
};

QString WithStep(const QString& verb, const QString& step) {
    return step.isEmpty() ? verb : verb + QLatin1Char(' ') + step;
}

}  // namespace

EditHistory::EditHistory(WindowModel& model, std::function<void()> changed)
    : model_(model), changed_(std::move(changed)) {
    stack_.setUndoLimit(kUndoLimit);
    undoAction_ = new QAction(tr("&Undo"), this);
    undoAction_->setObjectName(QStringLiteral("actionUndo"));
    undoAction_->setShortcuts(kUndoKeys);
    redoAction_ = new QAction(tr("&Redo"), this);
    redoAction_->setObjectName(QStringLiteral("actionRedo"));
    redoAction_->setShortcuts(kRedoKeys);
    connect(undoAction_, &QAction::triggered, this, &EditHistory::undo);
    connect(redoAction_, &QAction::triggered, this, &EditHistory::redo);
    connect(&stack_, &QUndoStack::indexChanged, this, &EditHistory::showStep);
    showStep();
}

EditHistory::~EditHistory() {
    if (window_ != nullptr) qApp->removeEventFilter(this);
}

void EditHistory::watch(QWidget* window) {
    window_ = window;
    qApp->installEventFilter(this);
}

void EditHistory::showStep() {
    undoAction_->setText(WithStep(tr("&Undo"), stack_.undoText()));
    undoAction_->setEnabled(stack_.canUndo());
    redoAction_->setText(WithStep(tr("&Redo"), stack_.redoText()));
    redoAction_->setEnabled(stack_.canRedo());
}

void EditHistory::undo() {
    endGesture();
    stack_.undo();
}

void EditHistory::redo() {
    endGesture();
    stack_.redo();
}

// --- recording ---------------------------------------------------------------------------

void EditHistory::open(const QString& name) {
    name_ = name;
    before_ = model_.pages().all();
    currentBefore_ = model_.pages().current();
}

void EditHistory::record() {
    const PageModel& pages = model_.pages();
    std::vector<PageChange> changes;
    for (int number = kFirstPage; number <= kLastPage; ++number) {
        const Page& now = pages.page(number);
        if (now != before_[number - 1]) changes.push_back({number, before_[number - 1], now});
    }
    if (changes.empty()) return;
    stack_.push(new PagesStep(name_, std::move(changes), currentBefore_, pages.current(),
                              [this](const auto& values, int current) {
                                  Pages all = model_.pages().all();
                                  for (const auto& [number, page] : values) all[number - 1] = *page;
                                  model_.pages().restore(all, current);
                                  // As after any edit: the store message of the page now open.
                                  model_.graphicChanged(true);
                                  if (changed_) changed_();
                              }));
}

void EditHistory::begin(const QString& name) {
    // A stroke ends where another action starts; a drag runs the shift buttons' own code,
    // whose steps belong to it.
    if (gesture_ == Gesture::Paint && depth_ == 0) endGesture();
    if (depth_++ == 0 && gesture_ == Gesture::None) open(name);
}

void EditHistory::end() {
    if (depth_ == 0) return;
    if (--depth_ == 0 && gesture_ == Gesture::None) record();
}

void EditHistory::startGesture(Gesture gesture, const QString& name) {
    if (depth_ > 0 || gesture_ == gesture) return;
    endGesture();
    gesture_ = gesture;
    open(name);
}

void EditHistory::painting(bool byKey) {
    if (gesture_ != Gesture::Paint) keyStroke_ = true;
    startGesture(Gesture::Paint, tr("Paint"));
    keyStroke_ = keyStroke_ && byKey;
}

void EditHistory::dragging() {
    startGesture(Gesture::Drag, tr("Shift"));
}

void EditHistory::endGesture() {
    if (gesture_ == Gesture::None) return;
    gesture_ = Gesture::None;
    record();
}

void EditHistory::takeBackKeyStroke() {
    if (gesture_ != Gesture::Paint || !keyStroke_) return;
    gesture_ = Gesture::None;
    model_.pages().restore(before_, currentBefore_);
    model_.regenerate();
    if (changed_) changed_();
}

// --- keyboard and mouse ------------------------------------------------------------------

bool EditHistory::inWindow(QObject* watched) const {
    auto* widget = qobject_cast<QWidget*>(watched);
    return widget != nullptr && window_ != nullptr && widget->window() == window_;
}

bool EditHistory::isUndoOrRedo(const QKeyEvent& key) const {
    const QKeySequence pressed(key.keyCombination());
    return kUndoKeys.contains(pressed) || kRedoKeys.contains(pressed);
}

bool EditHistory::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ShortcutOverride: {
            if (!inWindow(watched)) break;
            auto& key = static_cast<QKeyEvent&>(*event);
            const bool ours = isUndoOrRedo(key);
            // Ctrl (or Shift) went down over a cell and painted it, as it always does; here it
            // turns out to be the start of a shortcut, which is not painting.
            if (ours || otherKeys_.contains(QKeySequence(key.keyCombination()))) {
                takeBackKeyStroke();
            }
            // A text box would claim Ctrl+Z for its own text; in this window it undoes pages.
            if (ours) {
                key.ignore();
                return true;
            }
            break;
        }
        case QEvent::KeyPress:
            // Undo or redo with nothing to undo or redo: still not for the text boxes.
            if (inWindow(watched) && isUndoOrRedo(static_cast<QKeyEvent&>(*event))) return true;
            break;
        case QEvent::KeyRelease: {
            const auto& key = static_cast<const QKeyEvent&>(*event);
            if (gesture_ == Gesture::Paint && !key.isAutoRepeat() && inWindow(watched) &&
                (key.key() == Qt::Key_Shift || key.key() == Qt::Key_Control)) {
                endGesture();
            }
            break;
        }
        case QEvent::MouseButtonRelease:
            if (inWindow(watched)) endGesture();
            break;
        case QEvent::MouseMove: {
            // A release that happened elsewhere (the window lost the keyboard, say) shows as a
            // movement with nothing held.
            const auto& mouse = static_cast<const QMouseEvent&>(*event);
            if (gesture_ != Gesture::None && mouse.buttons() == Qt::NoButton &&
                !(mouse.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) &&
                inWindow(watched)) {
                endGesture();
            }
            break;
        }
        case QEvent::WindowDeactivate:
            if (watched == window_) endGesture();
            break;
        default:
            break;
    }
    return false;
}

}  // namespace lumidot
