// Each part of a desktop is installed where it is asked for.
#include "platform/controls/backend.h"

#include <utility>

namespace {

Backend* current = nullptr;

}  // namespace

Backend* InstallBackend(Backend* backend) {
    InstallDesktop(backend);
    InstallPictureDecoder(backend);
    InstallWindows(backend);
    return std::exchange(current, backend);
}
