#include "storage/preferences.h"

#include <QCoreApplication>

namespace lumidot {

std::unique_ptr<QSettings> OpenPreferences() {
    return std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope,
                                       QStringLiteral("Lumidot"),
                                       QCoreApplication::applicationName());
}

}  // namespace lumidot
