// The document in Maya scene files, as tokens (.ma) and as bytes (.mb). Both carry the same fields
// in the same order:
//
//   version (1), master mark, current camera, number of cameras; for each camera: name, number of
//   layers, index of the active layer (-1: none); for each layer: name, number of frames, visible,
//   opacity, state; for each frame: time, picture as PNG.
//
// ASCII: integers, 0/1, decimal numbers, quoted strings escaped as Maya's script language wants;
// times as MTime prints them; PNG as quoted lowercase hexadecimal. Bytes: int32 and float
// little-endian, unaligned; marks one byte; strings and PNG as an int32 count and that many bytes,
// strings in UTF-8; times int32, whole frames of the current unit.
//
// Nothing read is believed before it is checked against what is left. Of damaged data every drawing
// that is whole stays in the document: behind the damage the readers go on where they recognise one
// again, in the layer it belongs to as far as that can be told. What is lost is told and remembered
// (LayerDataLosses.h). A PNG of another kind than ours is read and becomes one of ours
// (PngCheck.h).
#pragma once

#include <maya/MStatus.h>

#include <iosfwd>

class MArgList;

namespace vellum {

class LayerManager;

namespace layer_data {

/// Always succeeds; a picture that cannot be encoded is written empty.
MStatus writeAscii(const LayerManager& manager, std::ostream& out);

/// Reads from argument `index` on and leaves `index` after the last one used. Each failure is
/// reported with the index of the argument that caused it. Frames whose picture does not load, or
/// whose time another has, are skipped and reported, the latter in one message behind all others.
/// kFailure for contents that break off, go on after their end or contradict themselves.
MStatus readAscii(LayerManager& manager, const MArgList& args, unsigned& index);

/// kFailure when the stream failed.
MStatus writeBinary(const LayerManager& manager, std::ostream& out);

/// Consumes exactly `length` bytes, or what is left of the stream, whatever it finds. Otherwise the
/// same.
MStatus readBinary(LayerManager& manager, std::istream& in, unsigned length);

} // namespace layer_data
} // namespace vellum
