#pragma once

#include <QSettings>

/// The program's preferences and remembered values. A short-lived object is made
/// wherever one is needed, so that no stale copy exists.
class AppSettings : public QSettings {
public:
    AppSettings() : QSettings(QStringLiteral("Kolvenar"), QStringLiteral("Zephrant")) {}
};
