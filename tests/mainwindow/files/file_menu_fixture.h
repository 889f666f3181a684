// The started window with its File menu, files in a temporary folder, the recent list in a
// settings file of the test's own, and the results window read out when it opens.
#pragma once

#include <QDialog>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTemporaryDir>

#include "codec/gs_message.h"
#include "decode/frm_decoded.h"
#include "mainwindow/file_actions.h"
#include "mainwindow/program_menus.h"
#include "mainwindow/read_only_text_box.h"
#include "support/main_form_fixture.h"
#include "ui_frm_decoded.h"

namespace lumidot::testing {

// Everything a file can change in the window, to see that a refused file changed nothing.
struct WindowState {
    Pages pages;
    int page;
    QString lcdText;
    QString pane;
    OutputMode mode;
    bool operator==(const WindowState&) const = default;
};

class FileMenuTest : public MainFormTest {
protected:
    void SetUp() override {
        MainFormTest::SetUp();
        ASSERT_TRUE(files.isValid());
        actions().recentFiles().useSettingsFile(files.filePath(QStringLiteral("recent.ini")));
        fake.prompts.onModal = [this](QDialog& dialog) {
            auto& shown = static_cast<frmDecoded&>(dialog);
            countLabel = shown.form().lblNumDecoded->text();
            results = shown.form().txtDecodedOut->text();
            dialog.accept();
        };
    }

    FileActions& actions() { return *window->findChild<FileActions*>(); }
    QAction* action(const char* name) {
        return window->menus().file->findChild<QAction*>(QLatin1String(name));
    }
    QString path(const QString& name) const { return files.filePath(name); }
    QString write(const QString& name, const ByteArray& bytes) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
        file.write(reinterpret_cast<const char*>(bytes.data()), qint64(bytes.size()));
        return path(name);
    }
    static ByteArray read(const QString& filePath) {
        QFile file(filePath);
        if (!file.open(QIODevice::ReadOnly)) return {};
        const QByteArray bytes = file.readAll();
        return ByteArray(bytes.begin(), bytes.end());
    }
    // Chooses the menu item with the file dialogs answering paths in turn.
    void choose(const char* item, std::initializer_list<QString> paths = {}) {
        for (const QString& answer : paths) fake.files.paths.push_back(answer);
        action(item)->trigger();
    }
    static WindowState stateOf(const MainForm& form) {
        const WindowModel& model = form.model();
        return {model.pages().all(), model.pages().current(), model.lcdText(), model.pane(),
                model.mode()};
    }
    WindowState state() const { return stateOf(*window); }
    // The recent list as the File menu shows it, without the access-key numbers.
    QStringList recentShown() {
        window->menus().file->popup(QPoint(0, 0));
        QStringList shown;
        for (QAction* item : actions().recentMenu()->actions()) {
            // "&1 path": the numbered items, not "Clear List".
            if (item->text().size() < 3 || !item->text().at(1).isDigit()) continue;
            shown << item->text().section(QLatin1Char(' '), 1);
        }
        window->menus().file->hide();
        return shown;
    }
    QString lastBoxTitle() const {
        return fake.prompts.shown.empty() ? QString() : fake.prompts.shown.back().title;
    }

    QTemporaryDir files;
    QString countLabel;
    QString results;
};

}  // namespace lumidot::testing
