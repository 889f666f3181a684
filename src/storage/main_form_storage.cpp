// memory.txt and settings.bin: the ten pages and the output layout between runs.
//
// They live beside the program. When that folder cannot be written (the program installed
// under /usr, say) they are saved in the user's own data folder instead, and read from
// there at the next start as long as none stand beside the program.
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include "codec/graphic_page.h"
#include "mainwindow/main_form.h"
#include "mainwindow/model_target.h"
#include "storage/atomic_file.h"
#include "storage/settings_records.h"
#include "storage/text_helpers.h"

namespace lumidot {
namespace {

const QString kMemoryFile = QStringLiteral("memory.txt");
const QString kSettingsFile = QStringLiteral("settings.bin");
// Stored lines are 221 characters; a longer one is damaged and is read no further.
constexpr qint64 kLongestMemoryLine = 4096;
// settings.bin holds three texts of at most five characters each.
constexpr qint64 kLongestSettingsFile = 4096;

QString UserDataFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

bool HasStoredFiles(const QString& folder) {
    return !folder.isEmpty() && (FileExists(folder + QLatin1Char('/') + kMemoryFile) ||
                                 FileExists(folder + QLatin1Char('/') + kSettingsFile));
}

}  // namespace

void MainForm::setStorageFolder(const QString& folder) {
    QString base = folder;
    while (base.size() > 1 && base.endsWith(QLatin1Char('/'))) base.chop(1);
    const QString slash = base.endsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/");
    memoryFilePath_ = base + slash + kMemoryFile;
    settingsFilePath_ = base + slash + kSettingsFile;
}

void MainForm::LoadMemoryAndSettings() {
    const QString userFolder = UserDataFolder();
    const bool fromUserFolder = !HasStoredFiles(programFolder_) && HasStoredFiles(userFolder);
    setStorageFolder(fromUserFolder ? userFolder : programFolder_);

    if (FileExists(memoryFilePath_)) {
        QFile memory(memoryFilePath_);
        if (memory.open(QIODevice::ReadOnly)) {
            for (int line = 0; line < kLastPage && !memory.atEnd(); ++line) {
                QByteArray text = memory.readLine(kLongestMemoryLine);
                if (!text.endsWith('\n')) {
                    // Skip the rest of an over-long line so the next one starts in place.
                    while (!memory.atEnd() && !memory.readLine(kLongestMemoryLine).endsWith('\n')) {
                    }
                }
                while (text.endsWith('\n') || text.endsWith('\r')) text.chop(1);
                DescribeInto(model_, text.toStdString());
            }
        }
    }

    model_.openPage(1);

    if (FileExists(settingsFilePath_)) {
        QFile settings(settingsFilePath_);
        if (settings.open(QIODevice::ReadOnly)) {
            const QByteArray bytes = settings.read(kLongestSettingsFile);
            qsizetype offset = 0;
            // Each field takes its text as soon as it is read; a record that cannot be read
            // leaves it and the fields after it with their own values.
            for (auto set : {&WindowModel::setPrefix, &WindowModel::setSuffix,
                             &WindowModel::setSeparator}) {
                const std::optional<QString> text = ReadStoredString(bytes, offset);
                if (!text) break;
                (model_.*set)(*text);
            }
        }
    }
}

void MainForm::SaveMemoryAndSettings() {
    model_.setMode(OutputMode::None);
    const Pages pages = model_.pages().all();
    QByteArray memory;
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        memory += QByteArray::fromStdString(
            MakeGraphicStoreSysEx(pages[page - 1], static_cast<std::uint8_t>(page)));
        memory += "\r\n";
    }
    QByteArray settings;
    const ByteLayout& layout = model_.layout();
    WriteStoredString(settings, layout.prefix);
    WriteStoredString(settings, layout.suffix);
    WriteStoredString(settings, layout.separator);

    auto saveBoth = [&](QString* failedPath, QString* error) {
        if (!WriteFileAtomically(memoryFilePath_, memory, error, beforeCommit_)) {
            *failedPath = memoryFilePath_;
            return false;
        }
        if (!WriteFileAtomically(settingsFilePath_, settings, error, beforeCommit_)) {
            *failedPath = settingsFilePath_;
            return false;
        }
        return true;
    };

    QString failedPath;
    QString error;
    if (saveBoth(&failedPath, &error)) return;

    // The folder beside the program may be read-only: fall back to the user's data folder.
    const QString userFolder = UserDataFolder();
    if (!userFolder.isEmpty() && QFileInfo(memoryFilePath_).absolutePath() != userFolder &&
        QDir().mkpath(userFolder)) {
        setStorageFolder(userFolder);
        if (saveBoth(&failedPath, &error)) return;
    }
    platform_.prompts.showMessage(
        this, QStringLiteral("Pages not saved"),
        QStringLiteral("Lumidot could not write %1:\r\n%2\r\n\r\n"
                       "The pages and the layout of this session were not saved.")
            .arg(QDir::toNativeSeparators(failedPath), error),
        Prompts::Icon::Critical, Prompts::Buttons::Ok, Prompts::Answer::Ok);
}

}  // namespace lumidot
