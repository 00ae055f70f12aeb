#pragma once

#include <QLabel>

/// A label that shows its pixmap stretched to its own size, however large that is.
///
/// The base class keeps a stretched copy of the whole pixmap, which a few zoom steps
/// make larger than memory. Beyond a limit only what is visible is drawn.
class PictureLabel : public QLabel {
public:
    /// Labels of more pixels than this keep no stretched copy.
    static constexpr qint64 LargestCopy = 4096LL * 4096LL;

    explicit PictureLabel(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
