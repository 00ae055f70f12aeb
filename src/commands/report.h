#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>

#include <utility>

/// What a command found and made: names and values, in the order in which they are told.
class Report {
public:
    void add(const QString &key, const QJsonValue &value)
    {
        m_entries << Entry(key, value);
    }
    /// Lines of "key: value"; a value that has none is left out.
    [[nodiscard]] QString asText() const;
    [[nodiscard]] QJsonObject asObject() const;
    /// One JSON object in one line.
    [[nodiscard]] QString asJson() const;
    [[nodiscard]] bool isEmpty() const { return m_entries.isEmpty(); }

private:
    using Entry = std::pair<QString, QJsonValue>;

    QList<Entry> m_entries;
};
