#include "controls/controls.h"

#include "base/error.h"

namespace memwright {

void set_length(Property<double>& length, double twips) {
    if (twips < 0) throw Error("A control cannot be less than nothing wide or high.");
    length = twips;
}

}  // namespace memwright
