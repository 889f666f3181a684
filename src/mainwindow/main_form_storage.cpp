// memory.txt and settings.bin: the ten pages and the output layout between runs. Where
// they live, the lock against a second copy and the messages are the storage session's
// business; here they meet the window.
#include <QMetaObject>
#include <QStandardPaths>

#include "codec/graphic_page.h"
#include "mainwindow/main_form.h"
#include "mainwindow/model_target.h"
#include "storage/memory_file.h"
#include "storage/settings_records.h"
#include "storage/storage_messages.h"
#include "storage/storage_session.h"

namespace lumidot {

void MainForm::setStorageFolder(const QString& folder) {
    QString base = folder;
    while (base.size() > 1 && base.endsWith(QLatin1Char('/'))) base.chop(1);
    const QString slash = base.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/");
    memoryFilePath_ = base + slash + QLatin1String(kMemoryFileName);
    settingsFilePath_ = base + slash + QLatin1String(kSettingsFileName);
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
        ModelTarget target(model_);
        storage_->noteMemoryLoad(
            LoadMemory(memory.bytes, memory.cutShort, target, model_.codePage()));
    }

    model_.openPage(1);

    if (storage_->settings().state == StoredFile::State::Read) {
        const auto texts = ReadSettingsBytes(storage_->settings().bytes);
        // Each field takes its text as soon as it is read; a record that cannot be read
        // leaves it and the fields after it with their own values.
        void (WindowModel::*fields[])(const QString&) = {
            &WindowModel::setPrefix, &WindowModel::setSuffix, &WindowModel::setSeparator};
        for (std::size_t i = 0; i < texts.size() && texts[i]; ++i) (model_.*fields[i])(*texts[i]);
    }
    refreshView();

    if (storage_->readOnly()) setWindowTitle(windowTitle() + kReadOnlyCaption);
    const QString notes = storage_->startNotes();
    if (!notes.isEmpty()) {
        platform_.prompts.showMessage(this, kStartNotesTitle, notes, Prompts::Icon::Exclamation,
                                      Prompts::Buttons::Ok, Prompts::Answer::Ok);
    }
}

void MainForm::SaveMemoryAndSettings() {
    if (!storage_ || storage_->readOnly()) return;
    // No mode is left selected, as the saving has always done; the pages come straight
    // from the model.
    model_.setMode(OutputMode::None);
    const ByteLayout& layout = model_.layout();
    const SaveOutcome outcome = storage_->save(
        BuildMemoryBytes(model_.pages().all()),
        BuildSettingsBytes({layout.prefix, layout.suffix, layout.separator}), beforeCommit_);
    if (outcome.kind == SaveOutcome::Kind::SavedElsewhere) setStorageFolder(outcome.folder);

    const SaveMessage message = SaveOutcomeMessage(outcome);
    if (message.title.isEmpty()) return;
    platform_.prompts.showMessage(
        this, message.title, message.prompt,
        message.critical ? Prompts::Icon::Critical : Prompts::Icon::Exclamation,
        Prompts::Buttons::Ok, Prompts::Answer::Ok);
}

}  // namespace lumidot
