#include "propagation/LossManage.h"

#include <cmath>

#include "logging/Log.h"
#include "propagation/Loss.h"

namespace {

// Attenuation in dB per metre per unit conductivity at unit permittivity.
constexpr double kVolumeLossFactor = 1636.0;

}  // namespace

bool LossManage::GetMaterialProps(eMaterial material, double& a, double& b, double& c, double& d) {
    switch (material) {
        case MAT_VACUUM:
            a = 1.0;
            b = 0.0;
            c = 0.0;
            d = 0.0;
            return true;
        case MAT_CONCRETE:
            a = 5.31;
            b = 0.0;
            c = 0.0326;
            d = 0.8095;
            return true;
    }
    Log::log(1) << "LossManage::GetMaterialProps: unknown material " << static_cast<int>(material)
                << "\n";
    return false;
}

bool LossManage::GetCondPerm(eMaterial material, double frequency, double& permittivity,
                             double& conductivity) {
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    double d = 0.0;
    if (!GetMaterialProps(material, a, b, c, d)) return false;
    permittivity = a * std::pow(frequency, b);
    conductivity = c * std::pow(frequency, d);
    return true;
}

bool LossManage::GetTheta2RAD(double permittivity1, double permittivity2, double theta,
                              double& theta2) {
    const double sine = std::sin(theta);
    theta2 = std::acos(std::sqrt(1.0 - (permittivity1 / permittivity2) * sine * sine));
    return !std::isnan(theta2);
}

bool LossManage::AddVolumeLoss(double conductivity, double permittivity, double distance,
                               Loss& loss) {
    const double alpha = conductivity * kVolumeLossFactor / std::sqrt(permittivity);
    Loss travel;
    travel.dB[0] = -alpha * distance;
    travel.dB[1] = -alpha * distance;
    loss += travel;
    return true;
}

bool LossManage::TotalInternalReflection(double permittivity1, double permittivity2, double theta) {
    return std::sqrt(permittivity1 / permittivity2) * std::sin(theta) >= 1.0;
}

bool LossManage::AddFaceReflectLoss(double permittivity1, double permittivity2, double i, double t,
                                    Loss& loss) {
    if (TotalInternalReflection(permittivity1, permittivity2, i)) return true;
    const double n1 = std::sqrt(permittivity1);
    const double n2 = std::sqrt(permittivity2);
    Loss face;
    face.value[0] = (n1 * std::cos(i) - n2 * std::cos(t)) / (n1 * std::cos(i) + n2 * std::cos(t));
    face.value[1] = (n2 * std::cos(i) - n1 * std::cos(t)) / (n2 * std::cos(i) + n1 * std::cos(t));
    face.ToDB();
    loss += face;
    return true;
}

bool LossManage::AddFaceTransmitLoss(double permittivity1, double permittivity2, double i, double t,
                                     Loss& loss) {
    if (TotalInternalReflection(permittivity1, permittivity2, i)) return true;
    const double n1 = std::sqrt(permittivity1);
    const double n2 = std::sqrt(permittivity2);
    Loss face;
    face.value[0] = 2.0 * n1 * std::cos(i) / (n1 * std::cos(i) + n2 * std::cos(t));
    face.value[1] = 2.0 * n1 * std::cos(i) / (n2 * std::cos(i) + n1 * std::cos(t));
    // 10 log10 of the amplitude factor, not of its square: the loss is charged as an amplitude.
    face.ToDB();
    loss += face;
    return true;
}
