#pragma once

namespace host {

/// Which camera each panel looks through goes with the scene, as statements at the end of the
/// script node in which the real program keeps its interface; what else that script says stays as
/// it is. Reading looks for these statements and runs nothing.
namespace savedViews {

void store();  ///< into the scene, which is about to be saved
void recall(); ///< from the scene, for the panels and cameras there are

} // namespace savedViews

} // namespace host
