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
    // Where frames stand: the first one, and the way from one to the next.
    struct Scale {
        double origin, step;

        [[nodiscard]] double at(double frame) const { return origin + frame * step; }
    };
    [[nodiscard]] Scale scale() const;
    void paintFiles(QPainter &painter, const Scale &scale, double bottom) const;

    Marks m_marks;
};
