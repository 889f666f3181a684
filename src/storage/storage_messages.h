// What the user is told about memory.txt and settings.bin. Only the main window shows
// these texts; they are put together here so that all of them read alike.
#pragma once

#include <QString>
#include <vector>

#include "storage/file_places.h"
#include "storage/memory_file.h"

namespace lumidot {

struct SaveOutcome;

// "line 3", "lines 3 and 5", "lines 2, 4 to 9 and 11" (long lists are shortened).
QString LineNumbersText(const std::vector<int>& lines);

// Everything worth telling at start, one paragraph per matter; empty when all is well.
struct StartFacts {
    const StoragePlan& plan;
    bool readOnly;  // nothing will be saved in this run
    const MemoryLoadReport& memory;
    QString memoryPath;   // the memory.txt that was read
    QString backupPath;   // where a copy of it is kept before saving; empty if none
    QString lockProblem;  // why the lock could not be taken; empty if it was
    QString lockPath;
};
QString StartNotesText(const StartFacts& facts);

inline const QString kStartNotesTitle = QStringLiteral("Pages and layout files");

// The question a second copy asks.
inline const QString kSecondCopyTitle = QStringLiteral("Lumidot is already running");
QString SecondCopyPrompt(const QString& folder, qint64 pid);

// Appended to the window's caption when the run saves nothing.
inline const QString kReadOnlyCaption = QStringLiteral(" [Read-Only]");

// How a failed save is reported; an empty title when there is nothing to say.
struct SaveMessage {
    QString title;
    QString prompt;
    bool critical = false;
};
SaveMessage SaveOutcomeMessage(const SaveOutcome& outcome);

}  // namespace lumidot
