// The File menu's writing half: exports of the pane's messages and of the pages, and the
// repaired copy of a file. Nothing is written over an existing file unless the user says so.
#include <QDir>
#include <QFileInfo>

#include "files/checksum_repair.h"
#include "files/file_kind.h"
#include "files/midi_file.h"
#include "files/syx_file.h"
#include "mainwindow/export_messages.h"
#include "mainwindow/file_actions.h"
#include "mainwindow/file_texts.h"
#include "mainwindow/main_form.h"
#include "storage/atomic_file.h"

namespace lumidot {
namespace {

bool SameFile(const QString& a, const QString& b) {
    const QFileInfo first(a), second(b);
    if (first.absoluteFilePath() == second.absoluteFilePath()) return true;
    // Through a link, or a folder named another way, it may still be the same file.
    return first.exists() && second.exists() &&
           first.canonicalFilePath() == second.canonicalFilePath();
}

// "song.mid" gives "song-repaired.mid", beside it.
QString RepairedName(const QString& path) {
    const QFileInfo info(path);
    const QString suffix = info.suffix();
    return info.dir().filePath(info.completeBaseName() + QStringLiteral("-repaired") +
                               (suffix.isEmpty() ? QString() : QLatin1Char('.') + suffix));
}

}  // namespace

bool FileActions::mayWrite(const QString& path, const QString& original) {
    if (!original.isEmpty() && SameFile(path, original)) {
        return ask(file_texts::ReplaceOriginal(path), true);
    }
    if (!QFileInfo::exists(path)) return true;
    return ask(file_texts::ReplaceExisting(path), false);
}

bool FileActions::write(const QString& path, const ByteArray& bytes) {
    QString why;
    const QByteArray data(reinterpret_cast<const char*>(bytes.data()),
                          static_cast<qsizetype>(bytes.size()));
    if (QFileInfo(path).isDir()) {
        why = QStringLiteral("it is a folder");
    } else if (WriteFileAtomically(path, data, &why)) {
        recent_.setLastFolder(QFileInfo(path).absolutePath());
        return true;
    }
    tell(file_texts::CannotSave(path, why));
    return false;
}

void FileActions::exportBytes(const QString& title, const QString& name, const QString& filter,
                              const ByteArray& bytes) {
    const QString suffix = QFileInfo(name).suffix();
    const QString path = askPath({FileQuestion::Kind::Save,
                                  title,
                                  QDir(recent_.lastFolder()).filePath(name),
                                  {filter, QStringLiteral("All files (*)")},
                                  suffix});
    if (path.isEmpty() || !mayWrite(path)) return;
    write(path, bytes);
}

void FileActions::exportMessage() {
    const auto messages = PaneMessages(window_.model().pane(), window_.model().layout());
    if (!messages) {
        tell(file_texts::NothingToExport());
        return;
    }
    exportBytes(file_texts::kExportMessageTitle, QStringLiteral("message.syx"),
                file_texts::kSyxFilter, WriteSyx(*messages));
}

void FileActions::exportPages() {
    exportBytes(file_texts::kExportPagesTitle, QStringLiteral("pages.syx"), file_texts::kSyxFilter,
                WriteSyx(PageStoreMessages(window_.model().pages().all())));
}

void FileActions::exportPagesAsMidi() {
    exportBytes(file_texts::kExportMidiTitle, QStringLiteral("pages.mid"), file_texts::kMidiFilter,
                WriteMidi(TimedPageMessages(window_.model().pages().all())));
}

void FileActions::repairFile() {
    const QString original = askPath({FileQuestion::Kind::Open,
                                      file_texts::kRepairTitle,
                                      recent_.lastFolder(),
                                      file_texts::RepairFilters(),
                                      {}});
    if (original.isEmpty()) return;
    const std::optional<QByteArray> bytes = readWhole(original);
    if (!bytes) return;
    std::vector<std::uint8_t> file(bytes->begin(), bytes->end());
    const FileKind kind = GuessFileKind(file, QFileInfo(original).fileName().toStdString());
    if (kind == FileKind::HexText) {
        tell(file_texts::NotRepairable(original));
        return;
    }
    const RepairReport report =
        kind == FileKind::Midi ? RepairMidiChecksums(file) : RepairSyxChecksums(file);
    if (report.error) {
        tell(file_texts::RepairUnreadable(original, *report.error));
        return;
    }
    recent_.setLastFolder(QFileInfo(original).absolutePath());
    if (report.fixes.empty()) {
        tell(file_texts::NothingToRepair(original, report.problems), false);
        return;
    }

    const QString suffix = QFileInfo(original).suffix();
    const QString copy =
        askPath({FileQuestion::Kind::Save,
                 file_texts::kRepairSaveTitle,
                 RepairedName(original),
                 {kind == FileKind::Midi ? file_texts::kMidiFilter : file_texts::kSyxFilter,
                  QStringLiteral("All files (*)")},
                 suffix});
    if (copy.isEmpty() || !mayWrite(copy, original)) return;
    if (!write(copy, file)) return;
    tell(file_texts::Repaired(original, copy, kind, report), false);
}

}  // namespace lumidot
