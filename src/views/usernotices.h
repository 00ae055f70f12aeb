#pragma once

#include <QString>

class QWidget;

/// Where a document's messages go. The desktop program shows message boxes; a
/// program without a window puts another object in its place.
class UserNotices {
public:
    virtual ~UserNotices() = default;
    virtual void information(QWidget *parent, const QString &title,
                             const QString &text) = 0;
    virtual void critical(QWidget *parent, const QString &title, const QString &text) = 0;
};

/// Modal boxes with an OK button.
class MessageBoxNotices : public UserNotices {
public:
    void information(QWidget *parent, const QString &title, const QString &text) override;
    void critical(QWidget *parent, const QString &title, const QString &text) override;
};
