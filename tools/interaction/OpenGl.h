// OpenGL as each system names it, for what is drawn straight on the screen. Last of all includes.
#pragma once

#ifdef __APPLE__
#include <OpenGL/gl.h>
#else
#ifdef _WIN32
#include <windows.h>
#endif
#include <GL/gl.h>
#endif
