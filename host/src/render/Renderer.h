#pragma once

#include <string>

namespace host {

/// How a view is drawn.
enum class Renderer {
    Viewport2, ///< Draw overrides and their UI drawables.
    Legacy     ///< MPxLocatorNode::draw in the OpenGL context.
};

/// The renderer that new views get. Setting it changes the existing views as well.
Renderer defaultRenderer();
void setDefaultRenderer(Renderer renderer);

/// Name as modelEditor -rendererName has it: "vp2Renderer" or "base_OpenGL_Renderer".
std::string rendererName(Renderer renderer);
/// Accepts those names and the short ones of the program's options, "vp2" and "legacy".
/// False, and renderer unchanged, for anything else.
bool rendererFromName(const std::string& name, Renderer& renderer);

} // namespace host
