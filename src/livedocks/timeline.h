#pragma once

#include <QSlider>

#include <vector>

/// The slider of the live view's frames, 0 to the last one, with marks under it.
class Timeline : public QSlider {
    Q_OBJECT

public:
    explicit Timeline(QWidget *parent = nullptr);

    /// What stands at frames: ends of a run, control points, files on disk.
    struct Marks {
        int from = -1, to = -1;     ///< of a run
        std::vector<double> points; ///< where control points are, in frames
        std::vector<int> files;     ///< frames whose files are there, rising

        bool operator==(const Marks &) const = default;
    };
    void setMarks(Marks marks);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] double placeOf(double frame) const;

    Marks m_marks;
};
