#pragma once

#include "tooldialogs/tooldialog.h"
#include "tools/rectify.h"
#include "ui_rectifydialog.h"

#include <array>

/// Warps an image by four pairs of points, which it remembers.
class RectifyDialog : public ToolForm<Ui::RectifyDialog> {
    Q_OBJECT

public:
    explicit RectifyDialog(QWidget *parent = nullptr);

private:
    // A coordinate's field, its setting and the number that the tool works with.
    struct Coordinate {
        QLineEdit *field;
        const char *key;
        std::size_t corner;
        double RectifyCorner::*value;
    };

    [[nodiscard]] Result<QImage> work(Progress &progress) override;
    void showProgress(qint64 row, qint64 of) override;
    [[nodiscard]] std::array<Coordinate, 16> coordinates() const;
    void storeCoordinates() const;
};
