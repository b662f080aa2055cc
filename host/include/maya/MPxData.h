#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MArgList;

/// Base of data that a plug-in keeps in plugs. Owned by the plug once set there.
class MPxData {
public:
    enum Type { kData, kGeometryData, kLast };

    MPxData();
    virtual ~MPxData();

    /// Tokens before `endOfTheLastParsedElement` are not the data's; on return it is the index
    /// after the last one consumed.
    virtual MStatus readASCII(const MArgList& argList, unsigned& endOfTheLastParsedElement);
    /// Consumes exactly `length` bytes.
    virtual MStatus readBinary(std::istream& in, unsigned length);
    virtual MStatus writeASCII(std::ostream& out);
    virtual MStatus writeBinary(std::ostream& out);

    virtual void copy(const MPxData& src) = 0;
    virtual MTypeId typeId() const = 0;
    virtual MString name() const = 0;
};
