#include "foundation/Counters.h"

namespace host {

Counters& counters() {
    static Counters all;
    return all;
}

} // namespace host
