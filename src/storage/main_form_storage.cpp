// memory.txt and settings.bin: the ten pages and the output layout between runs. Where
// they live, the lock against a second copy and the messages are the storage session's
// business; here they meet the window.
#include <QMetaObject>
#include <QStandardPaths>

#include "codec/graphic_page.h"
#include "mainwindow/main_form.h"
#include "storage/memory_file.h"
#include "storage/settings_records.h"
#include "storage/storage_messages.h"
#include "storage/storage_session.h"
#include "ui_main_form.h"

namespace lumidot {

void MainForm::setStorageFolder(const QString& folder) {
    QString base = folder;
    while (base.size() > 1 && base.endsWith(QLatin1Char('/'))) base.chop(1);
    const QString slash = base.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/");
    MemoryFilePath = base + slash + QLatin1String(kMemoryFileName);
    SettingsFilePath = base + slash + QLatin1String(kSettingsFileName);
}

void MainForm::LoadMemoryAndSettings() {
    storage_ = std::make_unique<StorageSession>(
        programFolder_, QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    setStorageFolder(storage_->fileFolder());

    if (storage_->lock() == StorageSession::Start::HeldByOther) {
        const Prompts::Answer answer = platform_.prompts.showMessage(
            this, kSecondCopyTitle,
            SecondCopyPrompt(storage_->saveFolder(), storage_->otherCopyPid()),
            Prompts::Icon::Exclamation, Prompts::Buttons::ReadOnlyOrQuit,
            Prompts::Answer::ReadOnly);
        storage_->openReadOnly();
        if (answer == Prompts::Answer::Quit) {
            // Closed from the event loop, which then ends: closing inside the load would
            // ask the loop to quit before it runs.
            QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
            return;
        }
    }

    const StoredFile& memory = storage_->memory();
    if (memory.state == StoredFile::State::Read) {
        storage_->noteMemoryLoad(LoadMemory(memory.bytes, memory.cutShort, *this));
    }

    SetPageNum(1);

    if (storage_->settings().state == StoredFile::State::Read) {
        const auto texts = ReadSettingsBytes(storage_->settings().bytes);
        // Each field takes its text as soon as it is read; a record that cannot be read
        // leaves it and the fields after it with their own values.
        QLineEdit* fields[] = {ui->txtHexPrefix, ui->txtHexSuffix, ui->txtHexSep};
        for (std::size_t i = 0; i < texts.size() && texts[i]; ++i) fields[i]->setText(*texts[i]);
    }

    if (storage_->readOnly()) setWindowTitle(windowTitle() + kReadOnlyCaption);
    const QString notes = storage_->startNotes();
    if (!notes.isEmpty()) {
        platform_.prompts.showMessage(this, kStartNotesTitle, notes, Prompts::Icon::Exclamation,
                                      Prompts::Buttons::Ok, Prompts::Answer::Ok);
    }
}

void MainForm::SaveMemoryAndSettings() {
    if (!storage_ || storage_->readOnly()) return;
    clearModes();
    std::array<Page, kLastPage> pages{};
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        SetPageNum(static_cast<std::uint8_t>(page));
        pages[static_cast<std::size_t>(page - 1)] = FDPixels;
    }
    const SaveOutcome outcome =
        storage_->save(BuildMemoryBytes(pages),
                       BuildSettingsBytes({ui->txtHexPrefix->text(), ui->txtHexSuffix->text(),
                                           ui->txtHexSep->text()}),
                       beforeCommit);
    if (outcome.kind == SaveOutcome::Kind::SavedElsewhere) setStorageFolder(outcome.folder);

    const SaveMessage message = SaveOutcomeMessage(outcome);
    if (message.title.isEmpty()) return;
    platform_.prompts.showMessage(
        this, message.title, message.prompt,
        message.critical ? Prompts::Icon::Critical : Prompts::Icon::Exclamation,
        Prompts::Buttons::Ok, Prompts::Answer::Ok);
}

}  // namespace lumidot
