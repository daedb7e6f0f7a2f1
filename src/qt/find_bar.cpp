#include "qt/find_bar.h"

#include <algorithm>

namespace memwright::qt {
namespace {

constexpr int kLeastCharacters = 12;  // of a box that are in sight

// A part of a line, which stays together.
QHBoxLayout* part_of(QBoxLayout& line, int stretch) {
    auto* const part = new QHBoxLayout;
    line.addLayout(part, stretch);
    return part;
}

}  // namespace

FindBar::FindBar(FindLine& line, GridView& grid) : LineBar("FindBar", grid), line_(line) {
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(2 * gap(), gap(), gap(), gap());
    whole->setSpacing(gap());
    for (QBoxLayout*& one : lines_) {
        one = new QBoxLayout(QBoxLayout::LeftToRight);
        one->setSpacing(gap());
        whole->addLayout(one);
    }
    constexpr int kOfBox = 1, kOfRest = 2;
    // In the order in which Tab visits them.
    const auto add_box_to = [&](std::size_t number, const QString& caption, TextBox& box,
                                const QString& accessible) {
        boxes_[number] = add_box(box, accessible);
        captions_[number] = add_caption(caption, *boxes_[number]);
        QHBoxLayout* const part = part_of(*lines_[number], kOfBox);
        part->addWidget(captions_[number]);
        part->addWidget(boxes_[number], 1);
    };
    add_box_to(0, tr("F&ind:"), line.query, tr("Find"));
    QHBoxLayout* const going = part_of(*lines_[0], kOfRest);
    going->addWidget(add_line(line.count), 1);
    going->addWidget(add_button(line.next));
    going->addWidget(add_button(line.previous));
    add_box_to(1, tr("Replace &with:"), line.replacement, tr("Replace with"));
    QHBoxLayout* const changing = part_of(*lines_[1], kOfRest);
    for (CommandButton* button : {&line.replace, &line.replace_all, &line.mark_all}) {
        changing->addWidget(add_button(*button));
    }
    changing->addStretch(1);
    going->addWidget(add_close_button(line.close));
    follow(line.shown);
    connections_.push_back(line.found_rows.changed.connect([&line, &grid] {
        static_cast<RowLabels*>(grid.verticalHeader())->show_found(line.found_rows);
    }));
}

void FindBar::enter_pressed(bool shift) { (shift ? line_.previous : line_.next).clicked(); }

void FindBar::resizeEvent(QResizeEvent* event) {
    LineBar::resizeEvent(event);
    fit_width();
}

void FindBar::changeEvent(QEvent* event) {
    LineBar::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) fit_width();
}

void FindBar::fit_width() {
    int caption_width = 0;
    for (const QLabel* caption : captions_) {
        caption_width = std::max(caption_width, caption->sizeHint().width());
    }
    for (QLabel* caption : captions_) caption->setMinimumWidth(caption_width);
    for (LineBox* box : boxes_) {
        box->setMinimumWidth(kLeastCharacters * fontMetrics().averageCharWidth());
    }
    int needed = 0;
    for (const QBoxLayout* line : lines_) {
        int width = line->spacing();
        for (int i = 0; i < line->count(); ++i) width += line->itemAt(i)->minimumSize().width();
        needed = std::max(needed, width);
    }
    const QMargins margins = layout()->contentsMargins();
    const bool fits = needed + margins.left() + margins.right() <= width();
    const auto direction = fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
    for (QBoxLayout* line : lines_) line->setDirection(direction);
}

}  // namespace memwright::qt
