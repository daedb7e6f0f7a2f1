#pragma once

#include <QIcon>

namespace memwright::qt {

// An arrow in the colour of a button's text, sharp at every scale and right in every palette.
QIcon arrow_icon(Qt::ArrowType direction);

}  // namespace memwright::qt
