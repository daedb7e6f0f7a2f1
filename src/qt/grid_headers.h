#pragma once

// The grid's label column, and the heading above it.

#include <QHeaderView>
#include <QString>
#include <QWidget>
#include <vector>

namespace memwright::qt {

// Labels in line with the cells beside them, whose lower edge is a ruled line.
class RowLabels final : public QHeaderView {
  public:
    explicit RowLabels(QWidget* parent);

    // Shows sections first to last as selected; none if last is less.
    void mark(int first, int last);

    // The section that is framed as the current one; -1 for none.
    void set_current(int section);

    // Puts a small mark behind the labels of grid rows, given in order.
    void show_found(std::vector<int> rows);

    // The width that it was given. The view asks again and again, and measuring 640 labels takes
    // longer than all else at the start.
    QSize sizeHint() const override { return minimumSize(); }

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

  private:
    bool is_marked(int section) const {
        return section >= first_marked_ && section <= last_marked_;
    }

    int current_ = -1;
    int first_marked_ = 0;
    int last_marked_ = -1;
    std::vector<int> found_rows_;
};

// Looks like the other headings.
class CornerHeading final : public QWidget {
  public:
    explicit CornerHeading(QWidget* parent);

    void set_text(const QString& text);
    const QString& text() const { return text_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
};

}  // namespace memwright::qt
