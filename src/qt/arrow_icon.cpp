#include "qt/arrow_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace memwright::qt {
namespace {

class ArrowEngine final : public QIconEngine {
  public:
    explicit ArrowEngine(Qt::ArrowType direction) : direction_(direction) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        // Shaft and head of an arrow that points up, in a square of side 1 around the origin.
        constexpr double kTip = 0.4, kHead = 0.32, kShaft = 0.11;
        const QPolygonF arrow({{0, -kTip},
                               {kHead, 0},
                               {kShaft, 0},
                               {kShaft, kTip},
                               {-kShaft, kTip},
                               {-kShaft, 0},
                               {-kHead, 0}});
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(QRectF(rect).center());
        painter->scale(rect.width(), direction_ == Qt::UpArrow ? rect.height() : -rect.height());
        painter->setPen(Qt::NoPen);
        painter->setBrush(QGuiApplication::palette().color(group, QPalette::ButtonText));
        painter->drawPolygon(arrow);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new ArrowEngine(*this); }

  private:
    Qt::ArrowType direction_;
};

}  // namespace

QIcon arrow_icon(Qt::ArrowType direction) { return QIcon(new ArrowEngine(direction)); }

}  // namespace memwright::qt
