// The five sliders of a solid chart's view, as one table: their names, ranges and stored keys.
#pragma once

#include "chartspace/chart.h"

#include <array>

namespace kelvrane {

struct ViewSlider {
    const char* name;
    const char* caption;
    const char* storedKey;
    double chartspace::View3D::*value; ///< whole degrees, the perspective in percent
    int lowest;
    int highest;
    int firstRun; ///< where nothing is stored
    int restored; ///< by cmdRestoreDefaults
};

/// The light's inclination is restored to 45, not to the 15 of a first run; that is wanted.
inline constexpr std::array viewSliders{
    ViewSlider{"sliderViewRotation", "View Rotation", "LastRot", &chartspace::View3D::rotation, 0,
               180, 20, 20},
    ViewSlider{"SliderViewInclination", "View Inclination", "LastIncl",
               &chartspace::View3D::inclination, -90, 90, 15, 15},
    ViewSlider{"SliderViewPerspective", "Perspective", "LastPers", &chartspace::View3D::perspective,
               0, 80, 20, 20},
    ViewSlider{"SliderLightRotation", "Light Rotation", "LastLightRot",
               &chartspace::View3D::lightRotation, 0, 360, 315, 315},
    ViewSlider{"SliderLightInclination", "Light Inclination", "LastLightIncl",
               &chartspace::View3D::lightInclination, 0, 90, 15, 45},
};

inline constexpr int sliderSmallStep = 1;
inline constexpr int sliderLargeStep = 5;
inline constexpr int sliderTickInterval = 20;

} // namespace kelvrane
