#pragma once

#include "base/settingsfile.h"

#include <QSettings>

/// The program's preferences and remembered values. A short-lived object is made
/// wherever one is needed, so that no stale copy exists; what it changed is stored when
/// it goes, whole or not at all.
class AppSettings : public QSettings {
public:
    AppSettings() : QSettings(QStringLiteral("Kolvenar"), QStringLiteral("Zephrant")) {}
    ~AppSettings() override
    {
        if (m_changed)
            storeSettings(*this);
    }

    void setValue(const QString &key, const QVariant &value)
    {
        m_changed = true;
        QSettings::setValue(key, value);
    }
    void remove(const QString &key)
    {
        m_changed = true;
        QSettings::remove(key);
    }
    void clear()
    {
        m_changed = true;
        QSettings::clear();
    }

private:
    bool m_changed = false;
};
