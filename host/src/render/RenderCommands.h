#pragma once

namespace host {

/// refresh, lookThru and displayPref. Safe to call again.
void registerRenderCommands();

} // namespace host
