// Names and numbers under which the plug-in is known to Maya, to scene files and to scripts.
#pragma once

namespace vellum {

inline constexpr char kVendor[] = "Rookvale";
inline constexpr char kVersion[] = "2.4.1";
inline constexpr char kRequiredApi[] = "Any";
inline constexpr char kProductName[] = "Vellum 2";

// Stored in scene files: never change.
inline constexpr char kNodeTypeName[] = "rvVellum";
inline constexpr unsigned kNodeTypeId = 0x11A886;
inline constexpr char kDataTypeName[] = "rvLayerData";
inline constexpr unsigned kDataTypeId = 0x11A887;

inline constexpr char kDrawClassification[] = "drawdb/geometry/rvVellum";
inline constexpr char kDrawRegistrant[] = "rvVellumPlugin";

inline constexpr char kNodeCommand[] = "rvVellumNode";
inline constexpr char kLayerCommand[] = "rvVellumLayer";
inline constexpr char kFrameCommand[] = "rvVellumFrame";
inline constexpr char kStrokeCommand[] = "rvVellumStroke";
inline constexpr char kUtilCommand[] = "rvVellumUtil";
inline constexpr char kDrawContextCommand[] = "rvVlDrawCtx";
inline constexpr char kTransformContextCommand[] = "rvVlTransformCtx";

/// The camera of the floating view.
inline constexpr char kFloatingCamera[] = "vellumCam";

} // namespace vellum
