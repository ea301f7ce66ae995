// New moons and solar longitudes for the lunisolar calendar.
//
// The new moon uses the periodic series of the Moon's phases from Meeus, "Astronomical Algorithms"
// (2nd ed., ch. 49), good to a few seconds; the Sun's position uses the truncated VSOP87 Earth
// series of the same book (appendix III) with FK5 correction, nutation and aberration, good to
// about a second of arc, which is a few seconds of time. Both are far inside the margin that
// decides a calendar day in nearly every case; the calendar's tests compare every day against an
// independent implementation.
#include "APAstronomy.h"

#include <cmath>
#include <cstddef>

namespace APAstronomy {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kJ2000 = 2451545.0;

double Radians(double degrees) {
    return degrees * kPi / 180.0;
}

double Normalise360(double degrees) {
    double d = std::fmod(degrees, 360.0);
    return d < 0 ? d + 360.0 : d;
}

struct Term {
    double a;
    double b;
    double c;
};

// Earth's heliocentric longitude, series L0..L5 (units of 1e-8 radian).
constexpr Term kL0[] = {
    {175347046, 0, 0},
    {3341656, 4.6692568, 6283.0758500},
    {34894, 4.62610, 12566.15170},
    {3497, 2.7441, 5753.3849},
    {3418, 2.8289, 3.5231},
    {3136, 3.6277, 77713.7715},
    {2676, 4.4181, 7860.4194},
    {2343, 6.1352, 3930.2097},
    {1324, 0.7425, 11506.7698},
    {1273, 2.0371, 529.6910},
    {1199, 1.1096, 1577.3435},
    {990, 5.233, 5884.927},
    {902, 2.045, 26.298},
    {857, 3.508, 398.149},
    {780, 1.179, 5223.694},
    {753, 2.533, 5507.553},
    {505, 4.583, 18849.228},
    {492, 4.205, 775.523},
    {357, 2.920, 0.067},
    {317, 5.849, 11790.629},
    {284, 1.899, 796.298},
    {271, 0.315, 10977.079},
    {243, 0.345, 5486.778},
    {206, 4.806, 2544.314},
    {205, 1.869, 5573.143},
    {202, 2.458, 6069.777},
    {156, 0.833, 213.299},
    {132, 3.411, 2942.463},
    {126, 1.083, 20.775},
    {115, 0.645, 0.980},
    {103, 0.636, 4694.003},
    {102, 0.976, 15720.839},
    {102, 4.267, 7.114},
    {99, 6.21, 2146.17},
    {98, 0.68, 155.42},
    {86, 5.98, 161000.69},
    {85, 1.30, 6275.96},
    {85, 3.67, 71430.70},
    {80, 1.81, 17260.15},
    {79, 3.04, 12036.46},
    {75, 1.76, 5088.63},
    {74, 3.50, 3154.69},
    {74, 4.68, 801.82},
    {70, 0.83, 9437.76},
    {62, 3.98, 8827.39},
    {61, 1.82, 7084.90},
    {57, 2.78, 6286.60},
    {56, 4.39, 14143.50},
    {56, 3.47, 6279.55},
    {52, 0.19, 12139.55},
    {52, 1.33, 1748.02},
    {51, 0.28, 5856.48},
    {49, 0.49, 1194.45},
    {41, 5.37, 8429.24},
    {41, 2.40, 19651.05},
    {39, 6.17, 10447.39},
    {37, 6.04, 10213.29},
    {37, 2.57, 1059.38},
    {36, 1.71, 2352.87},
    {36, 1.78, 6812.77},
    {33, 0.59, 17789.85},
    {30, 0.44, 83996.85},
    {30, 2.74, 1349.87},
    {25, 3.16, 4690.48},
};
constexpr Term kL1[] = {
    {628331966747.0, 0, 0},     {206059, 2.678235, 6283.075850},
    {4303, 2.6351, 12566.1517}, {425, 1.590, 3.523},
    {119, 5.796, 26.298},       {109, 2.966, 1577.344},
    {93, 2.59, 18849.23},       {72, 1.14, 529.69},
    {68, 1.87, 398.15},         {67, 4.41, 5507.55},
    {59, 2.89, 5223.69},        {56, 2.17, 155.42},
    {45, 0.40, 796.30},         {36, 0.47, 775.52},
    {29, 2.65, 7.11},           {21, 5.34, 0.98},
    {19, 1.85, 5486.78},        {19, 4.97, 213.30},
    {17, 2.99, 6275.96},        {16, 0.03, 2544.31},
    {16, 1.43, 2146.17},        {15, 1.21, 10977.08},
    {12, 2.83, 1748.02},        {12, 3.26, 5088.63},
    {12, 5.27, 1194.45},        {12, 2.08, 4694.00},
    {11, 0.77, 553.57},         {10, 1.30, 6286.60},
    {10, 4.24, 1349.87},        {9, 2.70, 242.73},
    {9, 5.64, 951.72},          {8, 5.30, 2352.87},
    {6, 2.65, 9437.76},         {6, 4.67, 4690.48},
};
constexpr Term kL2[] = {
    {52919, 0, 0},     {8720, 1.0721, 6283.0758}, {309, 0.867, 12566.152}, {27, 0.05, 3.52},
    {16, 5.19, 26.30}, {16, 3.68, 155.42},        {10, 0.76, 18849.23},    {9, 2.06, 77713.77},
    {7, 0.83, 775.52}, {5, 4.66, 1577.34},        {4, 1.03, 7.11},         {4, 3.44, 5573.14},
    {3, 5.14, 796.30}, {3, 6.05, 5507.55},        {3, 1.19, 242.73},       {3, 6.12, 529.69},
    {3, 0.31, 398.15}, {3, 2.28, 553.57},         {2, 4.38, 5223.69},      {2, 3.75, 0.98},
};
constexpr Term kL3[] = {
    {289, 5.844, 6283.076}, {35, 0, 0},          {17, 5.49, 12566.15}, {3, 5.20, 155.42},
    {1, 4.72, 3.52},        {1, 5.30, 18849.23}, {1, 5.97, 242.73},
};
constexpr Term kL4[] = {{114, 3.142, 0}, {8, 4.13, 6283.08}, {1, 3.84, 12566.15}};
constexpr Term kL5[] = {{1, 3.14, 0}};

template <size_t N>
double Series(const Term (&terms)[N], double tau) {
    double sum = 0;
    for (const Term& t : terms) {
        sum += t.a * std::cos(t.b + t.c * tau);
    }
    return sum;
}

// Julian day (TT) from a Julian day (UT) and back.
double ToTT(double jdUT) {
    double year = 2000.0 + (jdUT - kJ2000) / 365.25;
    return jdUT + DeltaTSeconds(year) / 86400.0;
}

double ToUT(double jdTT) {
    double year = 2000.0 + (jdTT - kJ2000) / 365.25;
    return jdTT - DeltaTSeconds(year) / 86400.0;
}

double SunApparentLongitudeTT(double jde) {
    double tau = (jde - kJ2000) / 365250.0;
    double l =
        Series(kL0, tau) +
        tau *
            (Series(kL1, tau) +
             tau * (Series(kL2, tau) +
                    tau * (Series(kL3, tau) + tau * (Series(kL4, tau) + tau * Series(kL5, tau)))));
    double heliocentric = l / 1e8 * 180.0 / kPi;
    double theta = heliocentric + 180.0;  // geometric geocentric longitude
    double t = tau * 10.0;                // Julian centuries
    theta += -0.09033 / 3600.0;           // conversion to the FK5 frame
    // Nutation in longitude (the four largest terms) and annual aberration.
    double omega = Radians(125.04452 - 1934.136261 * t);
    double sunMean = Radians(280.4665 + 36000.7698 * t);
    double moonMean = Radians(218.3165 + 481267.8813 * t);
    double nutation = (-17.20 * std::sin(omega) - 1.32 * std::sin(2 * sunMean) -
                       0.23 * std::sin(2 * moonMean) + 0.21 * std::sin(2 * omega)) /
                      3600.0;
    double meanAnomaly = Radians(357.52911 + 35999.05029 * t - 0.0001537 * t * t);
    double e = 0.016708634 - 0.000042037 * t - 0.0000001267 * t * t;
    double centre = (1.914602 - 0.004817 * t - 0.000014 * t * t) * std::sin(meanAnomaly) +
                    (0.019993 - 0.000101 * t) * std::sin(2 * meanAnomaly) +
                    0.000289 * std::sin(3 * meanAnomaly);
    double trueAnomaly = meanAnomaly + Radians(centre);
    double radius = 1.000001018 * (1 - e * e) / (1 + e * std::cos(trueAnomaly));
    double aberration = -20.4898 / 3600.0 / radius;
    return Normalise360(theta + nutation + aberration);
}

}  // namespace

double DeltaTSeconds(double y) {
    // Polynomial fits by Espenak and Meeus, piecewise by era.
    if (y < 1900) {
        double t = y - 1860;
        return 7.62 + 0.5737 * t - 0.251754 * t * t + 0.01680668 * t * t * t -
               0.0004473624 * t * t * t * t + t * t * t * t * t / 233174.0;
    }
    if (y < 1920) {
        double t = y - 1900;
        return -2.79 + 1.494119 * t - 0.0598939 * t * t + 0.0061966 * t * t * t -
               0.000197 * t * t * t * t;
    }
    if (y < 1941) {
        double t = y - 1920;
        return 21.20 + 0.84493 * t - 0.076100 * t * t + 0.0020936 * t * t * t;
    }
    if (y < 1961) {
        double t = y - 1950;
        return 29.07 + 0.407 * t - t * t / 233.0 + t * t * t / 2547.0;
    }
    if (y < 1986) {
        double t = y - 1975;
        return 45.45 + 1.067 * t - t * t / 260.0 - t * t * t / 718.0;
    }
    if (y < 2005) {
        double t = y - 2000;
        return 63.86 + 0.3345 * t - 0.060374 * t * t + 0.0017275 * t * t * t +
               0.000651814 * t * t * t * t + 0.00002373599 * t * t * t * t * t;
    }
    if (y < 2050) {
        double t = y - 2000;
        return 62.92 + 0.32217 * t + 0.005589 * t * t;
    }
    double u = (y - 1820) / 100.0;
    return -20 + 32 * u * u - 0.5628 * (2150 - y);
}

double NewMoonUT(int lunation) {
    double k = lunation;
    double t = k / 1236.85;
    double t2 = t * t;
    double t3 = t2 * t;
    double t4 = t3 * t;
    double jde =
        2451550.09766 + 29.530588861 * k + 0.00015437 * t2 - 0.000000150 * t3 + 0.00000000073 * t4;
    double e = 1 - 0.002516 * t - 0.0000074 * t2;
    double m = Radians(2.5534 + 29.10535670 * k - 0.0000014 * t2 - 0.00000011 * t3);
    double mp =
        Radians(201.5643 + 385.81693528 * k + 0.0107582 * t2 + 0.00001238 * t3 - 0.000000058 * t4);
    double f =
        Radians(160.7108 + 390.67050284 * k - 0.0016118 * t2 - 0.00000227 * t3 + 0.000000011 * t4);
    double om = Radians(124.7746 - 1.56375588 * k + 0.0020672 * t2 + 0.00000215 * t3);

    double c = -0.40720 * std::sin(mp) + 0.17241 * e * std::sin(m) + 0.01608 * std::sin(2 * mp) +
               0.01039 * std::sin(2 * f) + 0.00739 * e * std::sin(mp - m) -
               0.00514 * e * std::sin(mp + m) + 0.00208 * e * e * std::sin(2 * m) -
               0.00111 * std::sin(mp - 2 * f) - 0.00057 * std::sin(mp + 2 * f) +
               0.00056 * e * std::sin(2 * mp + m) - 0.00042 * std::sin(3 * mp) +
               0.00042 * e * std::sin(m + 2 * f) + 0.00038 * e * std::sin(m - 2 * f) -
               0.00024 * e * std::sin(2 * mp - m) - 0.00017 * std::sin(om) -
               0.00007 * std::sin(mp + 2 * m) + 0.00004 * std::sin(2 * mp - 2 * f) +
               0.00004 * std::sin(3 * m) + 0.00003 * std::sin(mp + m - 2 * f) +
               0.00003 * std::sin(2 * mp + 2 * f) - 0.00003 * std::sin(mp + m + 2 * f) +
               0.00003 * std::sin(mp - m + 2 * f) - 0.00002 * std::sin(mp - m - 2 * f) -
               0.00002 * std::sin(3 * mp + m) + 0.00002 * std::sin(4 * mp);

    // Planetary arguments.
    const double args[14][2] = {
        {299.77 + 0.107408 * k - 0.009173 * t2, 0.000325},
        {251.88 + 0.016321 * k, 0.000165},
        {251.83 + 26.651886 * k, 0.000164},
        {349.42 + 36.412478 * k, 0.000126},
        {84.66 + 18.206239 * k, 0.000110},
        {141.74 + 53.303771 * k, 0.000062},
        {207.14 + 2.453732 * k, 0.000060},
        {154.84 + 7.306860 * k, 0.000056},
        {34.52 + 27.261239 * k, 0.000047},
        {207.19 + 0.121824 * k, 0.000042},
        {291.34 + 1.844379 * k, 0.000040},
        {161.72 + 24.198154 * k, 0.000037},
        {239.56 + 25.513099 * k, 0.000035},
        {331.55 + 3.592518 * k, 0.000023},
    };
    double planetary = 0;
    for (const auto& a : args) {
        planetary += a[1] * std::sin(Radians(a[0]));
    }
    return ToUT(jde + c + planetary);
}

double SunApparentLongitude(double jdUT) {
    return SunApparentLongitudeTT(ToTT(jdUT));
}

double SolarLongitudeMoment(double degrees, double guessUT) {
    double jde = ToTT(guessUT);
    for (int i = 0; i < 20; ++i) {
        double diff = degrees - SunApparentLongitudeTT(jde);
        diff = std::fmod(diff + 540.0, 360.0) - 180.0;  // -180..180
        jde += diff * 365.2422 / 360.0;
        if (std::fabs(diff) < 1e-7) {
            break;
        }
    }
    return ToUT(jde);
}

}  // namespace APAstronomy
