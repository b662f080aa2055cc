// How often a plug-in has asked for what costs time or flickers. Only tests look at it. Main thread
// only.
#pragma once

namespace host {

struct Counters {
    int dagWalks = 0;         ///< iterators over the whole DAG
    int allViewRefreshes = 0; ///< all views asked to paint
    int viewRefreshes = 0;    ///< one view painted at once
};

Counters& counters();

} // namespace host
