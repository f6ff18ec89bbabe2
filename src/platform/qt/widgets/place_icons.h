// Icons for volumes, places and folders.
#pragma once
#include <QIcon>

#include "platform/system/desktop.h"

class QStyle;

// The toolkit's own where it has one, else the desktop's theme's, else drawn here.
QIcon PlaceIcon(Volume::Kind kind, const QStyle& style);
