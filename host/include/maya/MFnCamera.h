#pragma once

#include <maya/MFnDagNode.h>

class MFnCamera : public MFnDagNode {
public:
    enum FilmFit { kFillFilmFit, kHorizontalFilmFit, kVerticalFilmFit, kOverscanFilmFit, kInvalid };

    MFnCamera();
    MFnCamera(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnCamera(const MObject& object, MStatus* ReturnStatus = nullptr);
    MFnCamera(const MDagPath& objectPath, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    FilmFit filmFit(MStatus* ReturnStatus = nullptr) const;
    MStatus setFilmFit(FilmFit filmFit);
    double filmFitOffset(MStatus* ReturnStatus = nullptr) const;
    double horizontalFilmAperture(MStatus* ReturnStatus = nullptr) const; ///< inches
    MStatus setHorizontalFilmAperture(double hFilmAperture);
    double verticalFilmAperture(MStatus* ReturnStatus = nullptr) const; ///< inches
    MStatus setVerticalFilmAperture(double vFilmAperture);
    double horizontalFilmOffset(MStatus* ReturnStatus = nullptr) const;
    double verticalFilmOffset(MStatus* ReturnStatus = nullptr) const;
    double lensSqueezeRatio(MStatus* ReturnStatus = nullptr) const;
    double aspectRatio(MStatus* ReturnStatus = nullptr) const;
    MStatus setAspectRatio(double aspectRatio);
    double overscan(MStatus* ReturnStatus = nullptr) const;
    MStatus setOverscan(double overscan);
    double focalLength(MStatus* ReturnStatus = nullptr) const; ///< millimetres
    MStatus setFocalLength(double focalLength);
    double nearClippingPlane(MStatus* ReturnStatus = nullptr) const;
    MStatus setNearClippingPlane(double dNear);
    double farClippingPlane(MStatus* ReturnStatus = nullptr) const;
    MStatus setFarClippingPlane(double dFar);
    bool isOrtho(MStatus* ReturnStatus = nullptr) const;
    MStatus setIsOrtho(bool orthoState);
    double orthoWidth(MStatus* ReturnStatus = nullptr) const;
    MStatus setOrthoWidth(double orthoWidth);
    double centerOfInterest(MStatus* ReturnStatus = nullptr) const;
    MStatus setCenterOfInterest(double dist);
    double horizontalFieldOfView(MStatus* ReturnStatus = nullptr) const; ///< radians
    double verticalFieldOfView(MStatus* ReturnStatus = nullptr) const;   ///< radians
    double cameraScale(MStatus* ReturnStatus = nullptr) const;
    double preScale(MStatus* ReturnStatus = nullptr) const;
    double postScale(MStatus* ReturnStatus = nullptr) const;

    bool panZoomEnabled(MStatus* ReturnStatus = nullptr) const;
    MStatus setPanZoomEnabled(bool enabled);
    double horizontalPan(MStatus* ReturnStatus = nullptr) const; ///< inches
    MStatus setHorizontalPan(double hPan);
    double verticalPan(MStatus* ReturnStatus = nullptr) const; ///< inches
    MStatus setVerticalPan(double vPan);
    double zoom(MStatus* ReturnStatus = nullptr) const;
    MStatus setZoom(double zoom);
};
