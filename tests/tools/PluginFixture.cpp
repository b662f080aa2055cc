// The plug-in tests' session, here as well.
#include "plugin/LinkedClasses.cpp"
