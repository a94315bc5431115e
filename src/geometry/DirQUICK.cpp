#include "geometry/DirQUICK.h"

#include "geometry/MatrixTemplate.h"

void DirQUICK::Copy(MatrixTemplate<double>& matrix) {
    SetValues(matrix.Get(0), matrix.Get(1), matrix.Get(2));
}
