#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "framework/Component.h"
#include "framework/ParamTypes.h"
#include "geometry/MatrixTemplate.h"
#include "geometry/VectorQUICK.h"
#include "radiation/PatternSlice.h"

class Array;
class Coordinates;
class Direction;
struct triLink;

// The gain of a source by direction, in dB. Four kinds, chosen by radPattern: the same peak
// gain everywhere, a dipole of radSourceSize wavelengths, a beam given by its half-power
// widths, and a pattern read from a ".pat" or ".apf" file. An array given by
// setRadPatternArray multiplies every kind by its array factor.
//
// Children: "dir1", the pattern's axis, and "dir2", the reference direction in the
// horizontal plane, both set from radPatternAxis; "array", the directions along which the
// pattern is drawn.
//
// checkParams reads the parameters and the file once per change and caches what the
// per-ray look-up needs; after that getIntensityDB only reads, so one checked pattern may
// serve several threads. Loading is not guarded: the file stream is a member.
class RadiationPattern : public Component {
public:
    RadiationPattern();
    ~RadiationPattern() override;

    // Adds the children "array", "dir1" (0, 0, 1) and "dir2" (1, 0, 0).
    bool Initialize() override;
    // Deletes the children with everything else; the pattern forgets them.
    bool Empty() override;
    // The parameters, then the child "Array" by type and the two directions by their names
    // (both children are of the type "Direction").
    bool FromXml(CElement* element) override;
    // Checks the source array first; then, once per change, reads the parameters, the
    // pattern file for the kind "radPattern_fromFile", the axes and the drawing resolution.
    // The result is kept and returned until the next change: false when the file failed.
    bool checkParams() override;

    // The gain in dB in the direction v (at least three elements). The value is computed
    // even when the pattern file failed to load; false only for a v that is too small.
    bool getIntensityDB(MatrixTemplate<double>& v, double& out);
    // The same for a pointer; false for null.
    bool getIntensityDB(MatrixTemplate<double>* v, double& out);
    // getIntensityDB for each direction, into intensities (one entry per direction, 0 for a
    // null or too small one). False when any direction had no value.
    bool getIntensitiesDB(std::vector<Coordinates*>& directions, std::vector<double>& intensities);
    // The directions (and the triangles between them) of the "array" child, a full sphere
    // of about as many directions as radPatternRes asks for, to draw the pattern with. The
    // objects stay the child's.
    bool getPatternDirSet(std::vector<Coordinates*>& directions, std::vector<triLink*>& links);
    // The array factor of array applies from now on; null switches it off.
    bool setRadPatternArray(Array* array);
    // The settings and the slice sizes on the log at level 4.
    void print();

    // True if the name contains ".pat", ".PAT", ".apf" or ".APF".
    static bool isPatternFile(const std::string& name);

    double getGain() const { return gain; }
    double getGainMin() const { return gainMin; }
    double getWavelength() const { return wavelength; }
    eParamValue getKind() const { return kind; }
    int getDrawCount() const { return drawCount; }
    const std::string& getDescription() const { return description; }
    int getKypat() const { return kypat; }
    int getNumVertSlices() const { return numVertSlices; }
    const PatternSlice& getHorizontalSlice() const { return horizontalSlice; }
    const std::vector<PatternSlice>& getVerticalSlices() const { return verticalSlices; }
    const std::string& getManufacturer() const { return manufacturer; }
    const std::string& getModel() const { return model; }
    const std::string& getFrequencyText() const { return frequencyText; }
    const std::string& getPolarization() const { return polarization; }
    Direction* getDir1() const { return dir1; }
    Direction* getDir2() const { return dir2; }
    Array* getArray() const { return array; }

private:
    // Steps of checkParams.
    void readSettings();
    bool readPatternFile();
    void readSourceSize();
    void setAxes();
    void setDrawing();
    // Takes the source array's positions and phase direction for the array factor.
    void cacheArrayFactor();

    // The file readers, in RadiationPatternFiles.cpp. readFileWith opens fileName into
    // fileStream, runs the reader over it and closes it again.
    bool readFileWith(bool (RadiationPattern::*reader)());
    bool readPatSections();
    bool readPatHeader(const std::string& line);
    void readPatHorizontalSlice();
    bool readPatSliceCounts(int& numValues);
    bool readPatVerticalSlice(int numValues);
    // Reads one "angle, dB" line into slice: 10^((dB - maximum) / 10) under the angle. A
    // line without a comma after its first character is skipped.
    void addPatValue(const std::string& line, PatternSlice& slice);
    bool readApfLines();
    void readApfLine(const std::string& line);
    void readApfSlice(PatternSlice& slice, int lineCount);
    void setWavelengthFromFrequency(const std::string& value, const std::string& unit);

    // The per-ray parts: read only.
    double intensityDB(const VectorQUICK& v) const;
    double dipoleDB(const VectorQUICK& v, double out) const;
    double hpbwDB(const VectorQUICK& v, double out) const;
    double fromFileDB(const VectorQUICK& v, double out) const;
    // The sum over the array's positions e of cos(2 pi (e . v - e . P) / wavelength).
    double arrayFactor(const VectorQUICK& v) const;

    // A position of the source array with its phase e . P.
    struct ArrayElement {
        VectorQUICK position;
        double phase;
    };

    Direction* dir1 = nullptr;
    Direction* dir2 = nullptr;
    Array* array = nullptr;
    Array* sourceArray = nullptr;
    bool applyArray = false;
    eParamValue kind = PV_EMPTY;
    double gainTxParam = 1.0;
    double gainMin = 1.0;
    double gain = 1.0;
    double hpbwHoriz = -1.0;
    double hpbwVert = -1.0;
    double sourceSize = 0.5;
    double size = -1.0;
    double wavelength = -1.0;
    bool wavelengthFound = false;
    std::ifstream fileStream;
    std::string fileName;
    std::string description;
    int kypat = 0;
    int numVertSlices = 0;
    PatternSlice horizontalSlice;
    std::vector<PatternSlice> verticalSlices;

    // What an ".apf" file tells besides the gains.
    std::string manufacturer;
    std::string model;
    std::string frequencyText;
    std::string polarization;

    // The number of directions the pattern is drawn with, from radPatternRes.
    int drawCount = 10000;
    // What checkParams found, returned until the next change.
    bool checkResult = false;
    // dir1, dir2 and dir1 x dir2 as plain unit vectors for the per-ray look-up.
    VectorQUICK axis1;
    VectorQUICK axis2;
    VectorQUICK axisCross;
    // The array factor's cache, refreshed whenever the source array's positions change.
    bool arrayFactorReady = false;
    double arrayWavelength = -1.0;
    std::vector<ArrayElement> arrayElements;
};
