// A whole desktop: what system, pictures and controls ask for, in one object.
#pragma once
#include "platform/controls/window_system.h"
#include "platform/drawing/picture_decoder.h"
#include "platform/system/desktop.h"

class Backend : public Desktop, public PictureDecoder, public WindowSystem {};

// Makes `backend` the desktop in use; nullptr leaves the program without one. Returns the one before.
Backend* InstallBackend(Backend* backend);
