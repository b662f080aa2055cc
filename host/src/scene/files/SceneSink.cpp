#include "scene/files/SceneSink.h"

namespace host {

std::string describe(const FilePlace& place) {
    if (place.line == 0)
        return place.file;
    return place.file + (place.isLine ? ", line " : ", byte ") + std::to_string(place.line);
}

} // namespace host
