#pragma once
#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MTime.h>

#include <string>

// Units as currentUnit and scene files name them. The first functions give the full name, the
// others also take the short ones ("cm", "deg", "24fps") and are false for anything else.
namespace host {

std::string linearName(MDistance::Unit unit);
std::string angleName(MAngle::Unit unit);
std::string timeName(MTime::Unit unit);

// "cm", "deg".
std::string linearShortName(MDistance::Unit unit);
std::string angleShortName(MAngle::Unit unit);

bool linearFromName(const std::string& name, MDistance::Unit& unit);
bool angleFromName(const std::string& name, MAngle::Unit& unit);
bool timeFromName(const std::string& name, MTime::Unit& unit);

} // namespace host
