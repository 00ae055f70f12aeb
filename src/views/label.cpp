#include "views/label.h"

void Label::paintEvent(QPaintEvent *event) { emit paintEventSignal(event); }
