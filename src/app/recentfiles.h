#pragma once

#include <QString>

#include <array>

/// The four files used last, newest first. They live in the settings alone.
struct RecentFiles {
    static constexpr int Count = 4;

    std::array<QString, Count> names;

    [[nodiscard]] static RecentFiles read();
    void write() const;
    /// Puts a name first. A new one drops the last; one that is there moves up.
    void addFirst(const QString &name);
};
