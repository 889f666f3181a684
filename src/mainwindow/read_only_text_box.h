// A multi-line text box the user can select and copy from but not type into. It gives back
// exactly the text it was given, CR LF line breaks included, which QPlainTextEdit alone
// would turn into its own paragraph breaks.
#pragma once

#include <QPlainTextEdit>

namespace lumidot {

class ReadOnlyTextBox : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit ReadOnlyTextBox(QWidget* parent = nullptr);

    void setText(const QString& text);
    QString text() const { return text_; }
    // The selection with CR LF between its lines.
    QString selectedText() const;
    void selectAll();
    void setCaretToStart();

    // While deferred, setText only remembers the text; laying it out for display waits
    // until deferring ends. Saves a long run of writes nobody sees from laying out each.
    void setDisplayDeferred(bool deferred);

private:
    void display();

    QString text_;
    bool deferred_ = false;
    bool stale_ = false;
};

}  // namespace lumidot
