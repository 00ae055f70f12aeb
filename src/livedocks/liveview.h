#pragma once

#include "live/flyer.h"
#include "live/livepicture.h"

#include <QElapsedTimer>
#include <QVariantList>
#include <QWidget>

/// The picture of the live view, and what a hand does in it.
///
/// It shows the pictures that it is given, the largest frame of their shape in its
/// middle, and tells how the mouse and the keys are moved; what follows from that is
/// settled by whoever listens.
class LiveView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QImage picture READ picture)
    Q_PROPERTY(int frame READ frame)
    Q_PROPERTY(QString source READ source)
    Q_PROPERTY(QVariantList camera READ camera)
    Q_PROPERTY(QString message READ message)
    Q_PROPERTY(bool refined READ isRefined)
    Q_PROPERTY(int shown READ shown)
    Q_PROPERTY(int dropped READ dropped)
    Q_PROPERTY(double answerMilliseconds READ answerMilliseconds)

public:
    /// What the camera of the picture is: that of a frame, one that was flown, or that of
    /// the waypoint that is edited.
    enum class Source { Frame, Flown, Waypoint };

    explicit LiveView(QWidget *parent = nullptr);

    [[nodiscard]] const QImage &picture() const { return m_shown.image; }
    /// The frame that is shown, from 0; -1 without a scenery.
    [[nodiscard]] int frame() const { return m_frame; }
    [[nodiscard]] QString source() const;
    /// x, y, z, heading, pitch, roll, focal length; degrees.
    [[nodiscard]] QVariantList camera() const;
    [[nodiscard]] QString message() const { return m_message; }
    /// Whether the picture is the final one of the present state.
    [[nodiscard]] bool isRefined() const { return m_refined; }
    /// Different pictures that were painted since the start.
    [[nodiscard]] int shown() const { return m_paintedPictures; }
    /// Frames that Play passed over since the start.
    [[nodiscard]] int dropped() const { return m_dropped; }
    /// Frames are played from this request on, of so many; those that are passed over are
    /// counted until endPlay().
    void beginPlay(quint64 request, int frames);
    void endPlay() { m_playFrames = 0; }
    /// From the last input to the end of painting its first picture; -1 before.
    [[nodiscard]] double answerMilliseconds() const { return m_answer; }

    /// Shows a picture, or the message of one that could not be drawn.
    void show(const LivePicture &picture, Source source);
    /// Shows nothing but a message.
    void showMessage(const QString &message);
    /// The present state is another one than that of the picture.
    void setStale()
    {
        m_refined = false;
        m_shown.refined = false;
    }
    /// Something was done that pictures answer.
    void beginInput();
    /// Pictures of this request answer what was done last.
    void inputAsked(quint64 request);
    /// Where the pictures that are wanted are as wide as this, in device pixels.
    [[nodiscard]] QSize deviceSize() const;
    /// Where the picture lies in the widget.
    [[nodiscard]] QRectF pictureRect() const;

    [[nodiscard]] QSize sizeHint() const override { return {480, 320}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {160, 100}; }

signals:
    void resized();
    /// Keys that steer are held now; `pressed` where one came to it.
    void keysChanged(const FlyKeys &keys, bool pressed);
    void dragged(const QPointF &pixels);
    void dragEnded();
    /// Steps of the wheel; with Ctrl they are for the focal length.
    void wheelTurned(double notches, bool control);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    bool steer(const QKeyEvent *event, bool held);
    void releaseKeys();
    void countPainted();
    void countDropped();

    LivePicture m_shown;
    Source m_source = Source::Frame;
    int m_frame = -1;
    QString m_message;
    bool m_refined = false;
    bool m_unpainted = false; // a new picture
    int m_paintedPictures = 0;
    int m_dropped = 0;
    double m_answer = -1.0;
    QElapsedTimer m_input;      // since the last one
    bool m_inputWaits = false;  // for a request
    quint64 m_inputRequest = 0; // that answers it; 0 where it is answered
    quint64 m_playRequest = 0;  // the first one of a play
    int m_playFrames = 0;       // of the flight that is played; 0 while none is
    int m_lastPlayed = -1;      // of the pictures that were painted
    FlyKeys m_keys;
    QPointF m_pointer; // of a drag
    bool m_dragging = false;
};
