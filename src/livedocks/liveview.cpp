#include "livedocks/liveview.h"

#include <QKeyEvent>
#include <QPainter>
#include <QWheelEvent>

#include <utility>

namespace {

constexpr int WheelNotch = 120; // eighths of a degree
constexpr int MessageMargin = 12;

// The switch of a key, or null.
bool *switchOf(FlyKeys &keys, int key)
{
    switch (key) {
    case Qt::Key_W:
    case Qt::Key_Up:
        return &keys.ahead;
    case Qt::Key_S:
    case Qt::Key_Down:
        return &keys.back;
    case Qt::Key_A:
    case Qt::Key_Left:
        return &keys.left;
    case Qt::Key_D:
    case Qt::Key_Right:
        return &keys.right;
    case Qt::Key_E:
        return &keys.up;
    case Qt::Key_Q:
        return &keys.down;
    case Qt::Key_Shift:
        return &keys.fast;
    default:
        return nullptr;
    }
}

} // namespace

LiveView::LiveView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("liveView"));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(tr("Live view"));
    setToolTip(tr("Drag to look around; W A S D to go, Q and E down and up."));
    setWhatsThis(
        tr("The frame of the active scenery at the place of the timeline, drawn by the "
           "renderer itself. Drag the mouse to look around. With the focus here, W, A, S "
           "and D or the arrows go, level along the heading; E goes up and Q down, Shift "
           "is faster. The wheel changes the speed, and with Ctrl the focal length. The "
           "scenery stays as it is until a button below takes the camera over."));
}

QString LiveView::source() const
{
    switch (m_source) {
    case Source::Flown:
        return QStringLiteral("flown");
    case Source::Waypoint:
        return QStringLiteral("waypoint");
    case Source::Frame:
        break;
    }
    return QStringLiteral("frame");
}

QVariantList LiveView::camera() const
{
    const ViewCamera &c = m_shown.camera;
    return {c.x, c.y, c.z, c.heading, c.pitch, c.roll, c.focal};
}

QSize LiveView::deviceSize() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

void LiveView::show(const LivePicture &picture, Source source)
{
    m_shown = picture;
    m_source = source;
    m_frame = picture.frame;
    m_message = picture.message;
    m_refined = false; // until it is painted
    m_unpainted = !picture.image.isNull();
    update();
}

void LiveView::showMessage(const QString &message)
{
    m_shown = {};
    m_frame = -1;
    m_source = Source::Frame;
    m_message = message;
    m_refined = false;
    m_unpainted = false;
    update();
}

void LiveView::inputAsked(quint64 request)
{
    if (std::exchange(m_inputWaits, false))
        m_inputRequest = request;
}

QRectF LiveView::pictureRect() const
{
    if (m_shown.image.isNull())
        return {};
    const QSizeF fitted =
        QSizeF(m_shown.image.size()).scaled(QSizeF(size()), Qt::KeepAspectRatio);
    return {QPointF((width() - fitted.width()) / 2, (height() - fitted.height()) / 2),
            fitted};
}

void LiveView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Dark).darker(150));
    const QRectF place = pictureRect();
    if (!m_shown.image.isNull()) {
        const QSizeF device = place.size() * devicePixelRatioF();
        // The refined picture has the pixels of the screen, and keeps them.
        const bool exact = qAbs(device.width() - m_shown.image.width()) < 1.5;
        painter.setRenderHint(QPainter::SmoothPixmapTransform, !exact);
        if (exact)
            painter.drawImage(place.topLeft().toPoint(), [this] {
                QImage image = m_shown.image;
                image.setDevicePixelRatio(devicePixelRatioF());
                return image;
            }());
        else
            painter.drawImage(place, m_shown.image);
    }
    if (!m_message.isEmpty()) {
        const QRect inside =
            rect().adjusted(MessageMargin, MessageMargin, -MessageMargin, -MessageMargin);
        const int flags = Qt::TextWordWrap |
                          (m_shown.image.isNull() ? int(Qt::AlignCenter)
                                                  : int(Qt::AlignTop | Qt::AlignLeft));
        const QRect box = painter.boundingRect(inside, flags, m_message);
        painter.fillRect(box.adjusted(-6, -4, 6, 4), QColor(0, 0, 0, 160));
        painter.setPen(Qt::white);
        painter.drawText(inside, flags, m_message);
    }
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    painter.end();
    countPainted();
}

void LiveView::countPainted()
{
    if (!m_unpainted)
        return;
    m_unpainted = false;
    ++m_paintedPictures;
    countDropped();
    m_refined = m_shown.refined;
    if (m_inputRequest != 0 && m_shown.request >= m_inputRequest) {
        m_answer = static_cast<double>(m_input.nsecsElapsed()) / 1e6;
        m_inputRequest = 0;
    }
}

void LiveView::beginInput()
{
    m_input.start();
    m_inputWaits = true;
}

void LiveView::beginPlay(quint64 request, int frames)
{
    m_playRequest = request;
    m_playFrames = frames;
    m_lastPlayed = -1;
}

// Frames between one picture that was painted and the next.
void LiveView::countDropped()
{
    if (m_playFrames == 0 || m_shown.request < m_playRequest)
        return;
    if (m_lastPlayed >= 0 && m_frame != m_lastPlayed)
        m_dropped += (m_frame - m_lastPlayed + m_playFrames) % m_playFrames - 1;
    m_lastPlayed = m_frame;
}

void LiveView::resizeEvent(QResizeEvent *) { emit resized(); }

// --- Keys and mouse ------------------------------------------------------------------

bool LiveView::steer(const QKeyEvent *event, bool held)
{
    bool *const key = switchOf(m_keys, event->key());
    constexpr auto Others = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (!key || (held && event->modifiers() & Others))
        return false;
    if (event->isAutoRepeat())
        return true;
    *key = held;
    beginInput();
    emit keysChanged(m_keys, held && key != &m_keys.fast);
    return true;
}

void LiveView::keyPressEvent(QKeyEvent *event)
{
    if (!steer(event, true))
        QWidget::keyPressEvent(event);
}

void LiveView::keyReleaseEvent(QKeyEvent *event)
{
    if (!steer(event, false))
        QWidget::keyReleaseEvent(event);
}

void LiveView::releaseKeys()
{
    if (m_keys == FlyKeys())
        return;
    m_keys = {};
    emit keysChanged(m_keys, false);
}

// A key that is let go elsewhere is not heard of here.
void LiveView::focusOutEvent(QFocusEvent *event)
{
    releaseKeys();
    QWidget::focusOutEvent(event);
}

void LiveView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    m_dragging = true;
    m_pointer = event->position();
    setCursor(Qt::ClosedHandCursor);
}

void LiveView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging)
        return;
    beginInput();
    const QPointF way = event->position() - m_pointer;
    m_pointer = event->position();
    emit dragged(way);
}

void LiveView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_dragging)
        return QWidget::mouseReleaseEvent(event);
    m_dragging = false;
    unsetCursor();
    emit dragEnded();
}

void LiveView::wheelEvent(QWheelEvent *event)
{
    beginInput();
    // Alt turns the wheel sideways on some systems.
    const QPoint turned = event->angleDelta();
    emit wheelTurned(double(turned.y() != 0 ? turned.y() : turned.x()) / WheelNotch,
                     event->modifiers() & Qt::ControlModifier);
    event->accept();
}
