// What the File menu shows and tells: its captions, the dialogs' titles and filters, and the
// message boxes about files. Every box names the file it is about.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "files/checksum_repair.h"
#include "files/file_kind.h"

namespace lumidot {

class FileMessages;

namespace file_texts {

inline const QString kOpen = QStringLiteral("&Open...");
inline const QString kOpenRecent = QStringLiteral("Open &Recent");
inline const QString kClearRecent = QStringLiteral("&Clear List");
inline const QString kExportMessage = QStringLiteral("Export &message as .syx...");
inline const QString kExportPages = QStringLiteral("Export all &pages as .syx...");
inline const QString kExportMidi = QStringLiteral("Export all pages as M&IDI file...");
inline const QString kRepair = QStringLiteral("Repair &checksums in file...");

// Dialog titles.
inline const QString kOpenTitle = QStringLiteral("Open");
inline const QString kExportMessageTitle = QStringLiteral("Export message as .syx");
inline const QString kExportPagesTitle = QStringLiteral("Export all pages as .syx");
inline const QString kExportMidiTitle = QStringLiteral("Export all pages as MIDI file");
inline const QString kRepairTitle = QStringLiteral("Repair checksums in file");
inline const QString kRepairSaveTitle = QStringLiteral("Save the repaired copy as");
inline const QString kOpeningTitle = QStringLiteral("Opening file");

// Name filters.
QStringList OpenFilters();
QStringList RepairFilters();
inline const QString kSyxFilter = QStringLiteral("SysEx files (*.syx)");
inline const QString kMidiFilter = QStringLiteral("MIDI files (*.mid *.midi)");

// A message box's title and prompt.
struct Box {
    QString title;
    QString prompt;
};

// Why a file cannot be read at all: not found, a folder, too big, unreadable, empty.
Box CannotOpen(const QString& path, const QString& reason);
QString NotFound();
QString IsFolder();
QString IsEmpty();
QString TooBig(qint64 bytes, qint64 limit);
QString Unreadable(const QString& why);

// What the reading of a file's messages found. Nothing when the file opens as it is; a
// refusal when it holds no message to open; a Yes/No question (asked with No as default)
// when it holds messages besides damage.
struct Verdict {
    Box box;
    bool question = false;
};
std::optional<Verdict> JudgeReading(const QString& path, const FileMessages& messages,
                                    bool startsWithMThd);

// The text in the progress dialog while a file's messages are taken over.
QString OpeningLabel(const QString& path);

// Replacing files.
Box ReplaceExisting(const QString& path);
Box ReplaceOriginal(const QString& path);
Box CannotSave(const QString& path, const QString& why);

// Exports.
Box NothingToExport();

// Repairs.
Box NotRepairable(const QString& path);
Box RepairUnreadable(const QString& path, const FileProblem& error);
Box NothingToRepair(const QString& path, const std::vector<FileProblem>& problems);
Box Repaired(const QString& original, const QString& copy, FileKind kind,
             const RepairReport& report);

}  // namespace file_texts
}  // namespace lumidot
