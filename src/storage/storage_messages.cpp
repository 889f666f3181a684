#include "storage/storage_messages.h"

#include <QDir>
#include <QStringList>

#include "storage/storage_session.h"

namespace lumidot {
namespace {

QString Native(const QString& path) {
    return QDir::toNativeSeparators(path);
}

// A list that long says nothing more: the file is kept whole anyway.
constexpr int kMostLineGroups = 6;

QString Capitalised(QString text) {
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    return text;
}

QString MemoryNote(const StartFacts& facts) {
    QStringList sentences;
    if (!facts.memory.unusedLines.empty()) {
        sentences << QStringLiteral(
                         "%1 of %2 %3 no page picture that Lumidot can keep (it reads "
                         "the first ten lines, one picture for each page).")
                         .arg(Capitalised(LineNumbersText(facts.memory.unusedLines)),
                              Native(facts.memoryPath),
                              facts.memory.unusedLines.size() == 1 ? QStringLiteral("holds")
                                                                   : QStringLiteral("hold"));
    }
    if (facts.memory.cutShort) {
        sentences << QStringLiteral("%1 is longer than Lumidot reads (%2 KiB).")
                         .arg(Native(facts.memoryPath))
                         .arg(kLongestMemoryFile / 1024);
    }
    sentences << (facts.backupPath.isEmpty()
                      ? QStringLiteral("The file is left as it is.")
                      : QStringLiteral("Before it saves the pages, Lumidot keeps the file as it "
                                       "is now in %1.")
                            .arg(Native(facts.backupPath)));
    return sentences.join(QStringLiteral("\r\n"));
}

}  // namespace

QString LineNumbersText(const std::vector<int>& lines) {
    QStringList groups;
    for (std::size_t i = 0; i < lines.size();) {
        std::size_t last = i;
        while (last + 1 < lines.size() && lines[last + 1] == lines[last] + 1) ++last;
        groups << (last == i ? QString::number(lines[i])
                             : QStringLiteral("%1 to %2").arg(lines[i]).arg(lines[last]));
        i = last + 1;
    }
    if (groups.size() > kMostLineGroups) {
        groups = groups.mid(0, kMostLineGroups - 1);
        groups << QStringLiteral("more");
    }
    QString text = lines.size() == 1 ? QStringLiteral("line ") : QStringLiteral("lines ");
    if (groups.size() <= 1) return text + groups.value(0);
    const QString lastGroup = groups.takeLast();
    return text + groups.join(QStringLiteral(", ")) + QStringLiteral(" and ") + lastGroup;
}

QString StartNotesText(const StartFacts& facts) {
    using Where = StoragePlan::Where;
    const StoragePlan& plan = facts.plan;
    const QString user = Native(plan.user.folder);
    const bool movesToUser = !facts.readOnly && plan.saveTo == Where::User;
    const QString movedText =
        QStringLiteral("the pages and the layout are saved in %1 instead%2")
            .arg(user, plan.readFrom == Where::Program
                           ? QStringLiteral(", after reading them from beside the program "
                                            "this once")
                           : QString());
    bool toldWhere = false;

    QStringList paragraphs;
    for (const StoragePlace* place : {&plan.program, &plan.user}) {
        for (const StoredFile* file : {&place->memory, &place->settings}) {
            if (file->state != StoredFile::State::Unreadable) continue;
            QString text =
                QStringLiteral("Lumidot cannot read %1: %2.\r\nThe file is left as it is")
                    .arg(Native(file->path), file->problem);
            if (place == &plan.program && movesToUser && !toldWhere) {
                text += QStringLiteral(", and ") + movedText;
                toldWhere = true;
            }
            paragraphs << text + QLatin1Char('.');
        }
    }

    if (plan.saveTo == Where::Nowhere) {
        paragraphs << QStringLiteral(
                          "Lumidot can save the pages and the layout neither beside "
                          "the program (%1) nor in its own folder (%2).\r\n"
                          "Nothing of this session will be saved.")
                          .arg(plan.programProblem, plan.userProblem);
    } else if (movesToUser && !toldWhere && plan.readFrom == Where::Program) {
        // Said in the run that carries the files over; later runs read and save them in
        // the user folder, as the user now knows.
        paragraphs << QStringLiteral("Lumidot cannot save beside the program: %1.\r\n%2.")
                          .arg(plan.programProblem, Capitalised(movedText));
    } else if (!facts.readOnly && plan.saveTo == Where::Program && plan.readFrom == Where::User) {
        paragraphs << QStringLiteral(
                          "The latest pages and layout are in %1, saved there while the "
                          "folder beside the program could not take them.\r\nLumidot "
                          "reads them from there and saves them beside the program, in "
                          "%2, from now on.")
                          .arg(user, Native(plan.program.folder));
    }

    if (facts.memory.losesSomething()) paragraphs << MemoryNote(facts);
    if (!facts.lockProblem.isEmpty()) {
        paragraphs << QStringLiteral(
                          "Lumidot could not make the lock file %1: %2.\r\nA second "
                          "copy of Lumidot started now would not be warned.")
                          .arg(Native(facts.lockPath), facts.lockProblem);
    }
    return paragraphs.join(QStringLiteral("\r\n\r\n"));
}

QString SecondCopyPrompt(const QString& folder, qint64 pid) {
    const QString who = pid > 0 ? QStringLiteral("Another copy of Lumidot (process %1)").arg(pid)
                                : QStringLiteral("Another copy of Lumidot");
    return QStringLiteral(
               "%1 is using the pages and the layout in %2.\r\n\r\nOpen this copy "
               "read-only, so that it saves nothing when it closes, or quit?")
        .arg(who, Native(folder));
}

SaveMessage SaveOutcomeMessage(const SaveOutcome& outcome) {
    switch (outcome.kind) {
        case SaveOutcome::Kind::Saved:
        case SaveOutcome::Kind::Skipped:
            return {};
        case SaveOutcome::Kind::SavedElsewhere:
            return {QStringLiteral("Pages saved elsewhere"),
                    QStringLiteral("Lumidot could not write %1:\r\n%2\r\n\r\nThe pages and the "
                                   "layout were saved in %3 instead; Lumidot reads them from "
                                   "there at its next start.")
                        .arg(Native(outcome.failedPath), outcome.reason, Native(outcome.folder)),
                    false};
        case SaveOutcome::Kind::NotSaved:
            return {QStringLiteral("Pages not saved"),
                    QStringLiteral("Lumidot could not write %1:\r\n%2\r\n\r\n"
                                   "The pages and the layout of this session were not saved.")
                        .arg(Native(outcome.failedPath), outcome.reason),
                    true};
    }
    return {};
}

}  // namespace lumidot
