#include "geometry/MatrixTemplate.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>

#include "framework/NexoBase.h"
#include "framework/ParamTypes.h"
#include "logging/Log.h"

namespace {

// The level of the determinant's and the inversion's trace lines.
constexpr int TRACE = 4;
// A determinant at or below this makes Invert fail.
constexpr double SMALLEST_DETERMINANT = 0.0001;

// The expansions are logged one level deeper than their caller.
class ExpansionIndent {
public:
    ExpansionIndent() { NexoBase::errorLog_p.IndentIncrease(2); }
    ~ExpansionIndent() { NexoBase::errorLog_p.IndentDecrease(2); }
    ExpansionIndent(const ExpansionIndent&) = delete;
    ExpansionIndent& operator=(const ExpansionIndent&) = delete;
};

}  // namespace

template <typename X>
MatrixTemplate<X>::MatrixTemplate(int rows, int cols) {
    objTypeStr = "MatrixTemplate<X>";
    SetDim(rows, cols);
    if (dim1 == dim2) SetIdentity();
}

template <typename X>
MatrixTemplate<X>::MatrixTemplate(const MatrixTemplate& other) : Component() {
    objTypeStr = "MatrixTemplate<X>";
    Copy(other);
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::operator=(const MatrixTemplate& other) {
    if (this != &other) Copy(other);
    return *this;
}

template <typename X>
MatrixTemplate<X>::~MatrixTemplate() {
    FreeBuffers();
    delete scratch;
}

template <typename X>
void MatrixTemplate<X>::FreeBuffers() {
    delete[] data;
    delete[] dataTrans;
    data = nullptr;
    dataTrans = nullptr;
}

template <typename X>
bool MatrixTemplate<X>::SetDim(int rows, int cols) {
    rows = std::max(rows, 1);
    cols = std::max(cols, 1);
    if (rows != dim1 || cols != dim2) {
        changed = true;
        FreeBuffers();
        dim1 = rows;
        dim2 = cols;
    }
    if (data == nullptr) data = new X[Count()]();
    if (dataTrans == nullptr) dataTrans = new X[Count()]();
    return true;
}

template <typename X>
bool MatrixTemplate<X>::UpdateDim(int rows, int cols) {
    rows = std::max(rows, 1);
    cols = std::max(cols, 1);
    if (rows == dim1 && cols == dim2) return true;
    X* buffers[2] = {data, dataTrans};
    X* resized[2] = {new X[rows * cols](), new X[rows * cols]()};
    for (int b = 0; b < 2; ++b) {
        for (int i = 0; i < rows; ++i) {
            for (int j = 0; j < cols; ++j) {
                const bool old = i < dim1 && j < dim2;
                resized[b][j + cols * i] = old ? buffers[b][j + dim2 * i] : (i == j ? 1.0 : 0.0);
            }
        }
    }
    FreeBuffers();
    data = resized[0];
    dataTrans = resized[1];
    dim1 = rows;
    dim2 = cols;
    changed = true;
    return true;
}

template <typename X>
int MatrixTemplate<X>::GetDim(int which) const {
    if (which == 1) return dim1;
    if (which == 2) return dim2;
    return -1;
}

template <typename X>
void MatrixTemplate<X>::Transformed(bool transformedFrame) {
    transformed = transformedFrame;
    changed = true;
}

template <typename X>
bool MatrixTemplate<X>::SetZero() {
    std::fill(data, data + Count(), X(0));
    std::fill(dataTrans, dataTrans + Count(), X(0));
    changed = true;
    return true;
}

template <typename X>
bool MatrixTemplate<X>::SetIdentity() {
    if (dim1 != dim2) return false;
    X* active = Active();
    for (int i = 0; i < dim1; ++i) {
        for (int j = 0; j < dim2; ++j) active[j + dim2 * i] = i == j ? 1.0 : 0.0;
    }
    changed = true;
    return true;
}

template <typename X>
X& MatrixTemplate<X>::Get(int index, bool noUpdate) {
    if (!noUpdate && changed) UpdateChanges();
    if (index < 0 || index >= Count()) return errorValue;
    return Active()[index];
}

template <typename X>
X& MatrixTemplate<X>::Get(int row, int col, bool noUpdate) {
    if (!noUpdate && changed) UpdateChanges();
    if (row < 0 || row >= dim1 || col < 0 || col >= dim2) return errorValue;
    return Active()[col + dim2 * row];
}

template <typename X>
bool MatrixTemplate<X>::SetValue(int index, X value) {
    if (index < 0 || index >= Count()) return false;
    quickSet(index, value);
    return true;
}

template <typename X>
bool MatrixTemplate<X>::SetValue(int row, int col, X value) {
    if (row < 0 || row >= dim1 || col < 0 || col >= dim2) return false;
    quickSet(row, col, value);
    return true;
}

template <typename X>
bool MatrixTemplate<X>::SetValues(X a, X b) {
    if (Count() != 2) SetDim(2, 1);
    quickSet(0, a);
    quickSet(1, b);
    return true;
}

template <typename X>
bool MatrixTemplate<X>::SetValues(X a, X b, X c) {
    if (Count() != 3) SetDim(3, 1);
    quickSet(0, a);
    quickSet(1, b);
    quickSet(2, c);
    return true;
}

template <typename X>
bool MatrixTemplate<X>::SetValues(X a, X b, X c, X d) {
    if (Count() != 4) SetDim(4, 1);
    quickSet(0, a);
    quickSet(1, b);
    quickSet(2, c);
    quickSet(3, d);
    return true;
}

template <typename X>
void MatrixTemplate<X>::CalcLength() {
    X sum = 0;
    for (int i = 0; i < Count(); ++i) sum += Get(i, true) * Get(i, true);
    length = std::sqrt(sum);
}

template <typename X>
bool MatrixTemplate<X>::UpdateChanges() {
    if (!changed) return true;
    if (normalised) Normalise();
    CalcLength();
    changed = false;
    return true;
}

template <typename X>
bool MatrixTemplate<X>::Normalise() {
    if (changed) CalcLength();
    if (length == 0.0) return false;
    X* active = Active();
    for (int i = 0; i < Count(); ++i) active[i] /= length;
    CalcLength();
    changed = false;
    return true;
}

template <typename X>
X MatrixTemplate<X>::GetLength() {
    UpdateChanges();
    return length;
}

template <typename X>
bool MatrixTemplate<X>::SetLength(X l) {
    const X current = GetLength();
    *this *= (l == 0.0 || current == 0.0) ? X(0) : l / current;
    return true;
}

template <typename X>
X MatrixTemplate<X>::Dot(MatrixTemplate& other) {
    if (!SameSize(other)) return -1.0;
    X sum = 0;
    for (int i = 0; i < Count(); ++i) sum += Get(i) * other.Get(i);
    return sum;
}

template <typename X>
X MatrixTemplate<X>::diff(MatrixTemplate& other) {
    if (!SameSize(other)) return -1.0;
    X sum = 0;
    for (int i = 0; i < Count(); ++i) {
        const X d = Get(i) - other.Get(i);
        sum += d * d;
    }
    return std::sqrt(sum);
}

template <typename X>
X MatrixTemplate<X>::DiffDot(MatrixTemplate& a, MatrixTemplate& b) {
    if (!SameSize(a) || !SameSize(b)) return -1.0;
    X sum = 0;
    for (int i = 0; i < Count(); ++i) sum += (a.Get(i) - Get(i)) * (b.Get(i) - Get(i));
    return sum;
}

template <typename X>
X MatrixTemplate<X>::DotDiff(MatrixTemplate& a, MatrixTemplate& b) {
    if (!SameSize(a) || !SameSize(b)) return -1.0;
    X sum = 0;
    for (int i = 0; i < Count(); ++i) sum += Get(i) * (a.Get(i) - b.Get(i));
    return sum;
}

namespace {

// acos of the clamped cosine, in the system's degrees.
double DegreesFromCosine(double cosine) {
    return std::acos(std::clamp(cosine, -1.0, 1.0)) * DEGREES_PER_RADIAN;
}

}  // namespace

template <typename X>
X MatrixTemplate<X>::Angle(MatrixTemplate& other) {
    return DegreesFromCosine(Dot(other) / (GetLength() * other.GetLength()));
}

template <typename X>
X MatrixTemplate<X>::Angle(MatrixTemplate& a, MatrixTemplate& b) {
    return DegreesFromCosine(DiffDot(a, b) / (diff(a) * diff(b)));
}

template <typename X>
bool MatrixTemplate<X>::SetCross(MatrixTemplate& a, MatrixTemplate& b) {
    if (a.dim1 != 3 || a.dim2 != 1 || b.dim1 != 3 || b.dim2 != 1) return false;
    const X x = a.Get(1) * b.Get(2) - a.Get(2) * b.Get(1);
    const X y = a.Get(2) * b.Get(0) - a.Get(0) * b.Get(2);
    const X z = a.Get(0) * b.Get(1) - a.Get(1) * b.Get(0);
    return SetValues(x, y, z);
}

template <typename X>
bool MatrixTemplate<X>::Copy(const MatrixTemplate& other) {
    transformed = other.transformed;
    return CopyTr(other);
}

template <typename X>
bool MatrixTemplate<X>::CopyTr(const MatrixTemplate& other) {
    if (this == &other) return true;
    SetDim(other.dim1, other.dim2);
    std::copy(other.Active(), other.Active() + Count(), Active());
    changed = true;
    multiplyFailed = other.multiplyFailed;
    return true;
}

template <typename X>
bool MatrixTemplate<X>::PlusProd(MatrixTemplate& other, X s) {
    if (!SameSize(other)) return false;
    UpdateChanges();
    for (int i = 0; i < Count(); ++i) Active()[i] += s * other.Get(i);
    changed = true;
    return true;
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::operator+=(MatrixTemplate& other) {
    PlusProd(other, 1.0);
    return *this;
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::operator-=(MatrixTemplate& other) {
    PlusProd(other, -1.0);
    return *this;
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::operator*=(X s) {
    UpdateChanges();
    for (int i = 0; i < Count(); ++i) Active()[i] *= s;
    changed = true;
    return *this;
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::operator/=(X s) {
    UpdateChanges();
    for (int i = 0; i < Count(); ++i) Active()[i] /= s;
    changed = true;
    return *this;
}

template <typename X>
MatrixTemplate<X> MatrixTemplate<X>::operator-(MatrixTemplate& other) {
    MatrixTemplate result(*this);
    result -= other;
    return result;
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::Scratch() {
    if (scratch == nullptr) scratch = new MatrixTemplate(1, 1);
    return *scratch;
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::ProductIntoThis(MatrixTemplate& left, MatrixTemplate& right) {
    MatrixTemplate& product = Scratch();
    if (left.dim2 != right.dim1) {
        product.multiplyFailed = 1;
    } else {
        left.UpdateChanges();
        right.UpdateChanges();
        product.SetDim(left.dim1, right.dim2);
        for (int i = 0; i < left.dim1; ++i) {
            for (int j = 0; j < right.dim2; ++j) {
                X sum = 0;
                for (int k = 0; k < left.dim2; ++k)
                    sum += left.quickGet(i, k) * right.quickGet(k, j);
                product.quickSet(i, j, sum);
            }
        }
        product.multiplyFailed = 0;
    }
    CopyTr(product);
    return *this;
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::operator*=(MatrixTemplate& other) {
    return ProductIntoThis(*this, other);
}

template <typename X>
MatrixTemplate<X>& MatrixTemplate<X>::operator^=(MatrixTemplate& other) {
    return ProductIntoThis(other, *this);
}

template <typename X>
bool MatrixTemplate<X>::Transpose() {
    UpdateChanges();
    MatrixTemplate temp(dim2, dim1);
    for (int i = 0; i < dim1; ++i) {
        for (int j = 0; j < dim2; ++j) temp.quickSet(j, i, quickGet(i, j));
    }
    return CopyTr(temp);
}

template <typename X>
X MatrixTemplate<X>::GetSolidAngle(const VectorQUICK& a, const VectorQUICK& b,
                                   const VectorQUICK& c) {
    VectorQUICK cross(3);
    cross.SetCross(b, c);
    const X la = a.GetLength();
    const X lb = b.GetLength();
    const X lc = c.GetLength();
    return std::abs(a.Dot(cross)) / (la * lb * lc + a.Dot(b) * lc + a.Dot(c) * lb + b.Dot(c) * la);
}

template <typename X>
X MatrixTemplate<X>::GetSolidAngle(MatrixTemplate& a, MatrixTemplate& b, MatrixTemplate& c) {
    const VectorQUICK qa(a.Get(0), a.Get(1), a.Get(2));
    const VectorQUICK qb(b.Get(0), b.Get(1), b.Get(2));
    const VectorQUICK qc(c.Get(0), c.Get(1), c.Get(2));
    return GetSolidAngle(qa, qb, qc);
}

template <typename X>
X MatrixTemplate<X>::Determinant() {
    if (dim1 != dim2) {
        Log::log(1) << "MatrixTemplate<X>::Determinant() - dim1 != dim2\n";
        return 0;
    }
    if (dim1 == 1) {
        Log::log(1) << "MatrixTemplate<X>::Determinant() - dim1 = dim2 = 1\n";
        return 0;
    }
    return Determinant(0, 0, dim1);
}

template <typename X>
X MatrixTemplate<X>::Determinant(int, int, int count) {
    determinant = 0;
    if (count < 1 || count > std::min(dim1, dim2)) {
        Log::log(1) << "MatrixTemplate<X>::Determinant() - count " << count << " out of range\n";
        return 0;
    }
    UpdateChanges();
    std::vector<int> perm(count);
    std::iota(perm.begin(), perm.end(), 0);
    detSign = 1;
    permCount = 1;
    ExpansionIndent indent;
    splitPerm(perm, count, count, [&] { addToDet(perm, count); });
    return determinant;
}

// Visits every permutation of perm[0..k-1] by swapping each entry into the last place,
// flipping detSign with each real swap; at the bottom addTerm adds the permutation's term.
template <typename X>
void MatrixTemplate<X>::splitPerm(std::vector<int>& perm, int n, int k,
                                  const std::function<void()>& addTerm) {
    if (k == 0) {
        printPerm(perm, n);
        addTerm();
        ++permCount;
        return;
    }
    const int last = k - 1;
    for (int i = last; i >= 0; --i) {
        std::swap(perm[last], perm[i]);
        if (last != i) detSign = -detSign;
        splitPerm(perm, n, k - 1, addTerm);
        std::swap(perm[last], perm[i]);
        if (last != i) detSign = -detSign;
    }
}

template <typename X>
void MatrixTemplate<X>::addToDet(const std::vector<int>& perm, int n) {
    X piece = detSign;
    for (int i = 0; i < n; ++i) piece *= quickGet(i, perm[i]);
    Log::log(TRACE) << "detPiece = " << static_cast<double>(piece) << "\n";
    determinant += piece;
}

template <typename X>
void MatrixTemplate<X>::printPerm(const std::vector<int>& perm, int n) {
    Log& line = Log::log(TRACE) << "perm " << permCount << ":";
    for (int i = 0; i < n; ++i) line << " " << perm[i];
    line << "\n";
}

template <typename X>
X MatrixTemplate<X>::Cofactor(int row, int col) {
    cofactor = 0;
    if (dim1 != dim2 || dim1 < 2 || row < 0 || row >= dim1 || col < 0 || col >= dim2) {
        Log::log(1) << "MatrixTemplate<X>::Cofactor() - no minor (" << row << ", " << col
                    << ") of a " << dim1 << " by " << dim2 << " matrix\n";
        return 0;
    }
    UpdateChanges();
    const int n = dim1 - 1;
    std::vector<int> columns;
    for (int j = 0; j < dim2; ++j) {
        if (j != col) columns.push_back(j);
    }
    std::vector<int> perm(n);
    std::iota(perm.begin(), perm.end(), 0);
    detSign = 1;
    permCount = 1;
    {
        ExpansionIndent indent;
        splitPerm(perm, n, n, [&] { addToCofactor(perm, n, row, columns); });
    }
    Log::log(TRACE) << "cof = " << static_cast<double>(cofactor) << "\n";
    return cofactor;
}

// Row r of the minor is row r of the matrix below the removed row and r + 1 from it on.
template <typename X>
void MatrixTemplate<X>::addToCofactor(const std::vector<int>& perm, int n, int row,
                                      const std::vector<int>& columns) {
    X piece = detSign;
    for (int r = 0; r < n; ++r) piece *= quickGet(r < row ? r : r + 1, columns[perm[r]]);
    cofactor += piece;
}

template <typename X>
bool MatrixTemplate<X>::Invert() {
    Log::log(TRACE) << "MatrixTemplate<X>::Invert() .. start\n";
    Log::log(TRACE) << "initial\n";
    const X det = Determinant();
    if (det <= SMALLEST_DETERMINANT) {
        Log::log(1) << "determ <= 0.0001\n";
        Log::log(1) << "MatrixTemplate<X>::Invert() .. finish - fail\n";
        return false;
    }
    Log::log(TRACE) << "determ = " << static_cast<double>(det) << "\n";
    MatrixTemplate temp(dim1, dim2);
    if (dim1 == 2) {
        temp.quickSet(0, 0, quickGet(1, 1) / det);
        temp.quickSet(0, 1, 0 - quickGet(0, 1) / det);
        temp.quickSet(1, 0, 0 - quickGet(1, 0) / det);
        temp.quickSet(1, 1, quickGet(0, 0) / det);
    } else {
        for (int i = 0; i < dim1; ++i) {
            for (int j = 0; j < dim2; ++j) {
                const X sign = (i + j) % 2 == 0 ? 1.0 : -1.0;
                temp.quickSet(i, j, sign * Cofactor(i, j) / det);
            }
        }
    }
    Log::log(TRACE) << "after calcs\n";
    // The 2 by 2 case passes here too, which transposes its finished inverse.
    Log::log(TRACE) << "out of if() ... after calcs\n";
    Log::log(TRACE) << "before copy\n";
    CopyTr(temp);
    Log::log(TRACE) << "before transpose\n";
    Transpose();
    Log::log(TRACE) << "after transpose\n";
    Log::log(TRACE) << "MatrixTemplate<X>::Invert() .. finish\n";
    changed = true;
    return true;
}

template <typename X>
bool MatrixTemplate<X>::CheckEq(MatrixTemplate<double>* other) {
    if (other == nullptr) return false;
    // Takes the other's dimensions (keeping what fits, so that the walk below stays
    // inside this matrix's buffers).
    UpdateDim(other->dim1, other->dim2);
    bool result = true;
    result = result && (dim1 & 1);
    result = result && (dim2 & 1);
    const X* mine = transformed ? data : dataTrans;
    const X* theirs = transformed ? other->data : other->dataTrans;
    for (int i = 0; i < Count(); ++i) result = result && mine[i] == theirs[i];
    return result;
}

template <typename X>
bool MatrixTemplate<X>::QuickSetFromChildren() {
    UpdateChanges();
    SetParameterValue<int>(PN_DIM1, dim1);
    SetParameterValue<int>(PN_DIM2, dim2);
    for (int i = 0; i < Count(); ++i) {
        SetParameterValue<double>(PN_VAL, quickGet(i), PU_NON, PM_NON, i);
    }
    // Values of a larger former size go.
    while (GetCount(PN_VAL) > Count())
        RemoveParameter(GetParameterIndexp(PN_VAL, GetMaxIndex(PN_VAL)));
    return Component::QuickSetFromChildren();
}

template <typename X>
bool MatrixTemplate<X>::QuickSetToChildren(bool force) {
    int rows = dim1;
    int cols = dim2;
    GetParameterValue<int>(PN_DIM1, rows);
    GetParameterValue<int>(PN_DIM2, cols);
    SetDim(rows, cols);
    for (int i = 0; i < Count(); ++i) {
        double value = 0.0;
        if (GetParameterIndexValue<double>(PN_VAL, i, value)) quickSet(i, value);
    }
    changed = true;
    return Component::QuickSetToChildren(force);
}

template <typename X>
bool MatrixTemplate<X>::ToXml(CElement* element, bool leaveOutExpanded) {
    QuickSetFromChildren();
    return Component::ToXml(element, leaveOutExpanded);
}

template <typename X>
bool MatrixTemplate<X>::FromXml(CElement* element) {
    if (!Component::FromXml(element)) return false;
    return QuickSetToChildren(true);
}

template <typename X>
bool MatrixTemplate<X>::MoveByAction(const std::string& action, double x, double y) {
    UpdateChanges();
    if (action == "movex" || action == "movexy") quickSet(0, quickGet(0) + x);
    if ((action == "movey" || action == "movexy") && Count() > 1) quickSet(1, quickGet(1) + y);
    if (action == "scale") *this *= x;
    return action == "movex" || action == "movey" || action == "movexy" || action == "scale";
}

template <typename X>
void MatrixTemplate<X>::Print() {
    UpdateChanges();
    Log::log(TRACE) << objTypeStr << " \"" << GetName() << "\" " << dim1 << " by " << dim2
                    << (transformed ? " (transformed)" : "") << "\n";
    for (int i = 0; i < dim1; ++i) {
        Log& line = Log::log(TRACE);
        for (int j = 0; j < dim2; ++j) line << (j == 0 ? "" : ", ") << quickGet(i, j);
        line << "\n";
    }
}

template class MatrixTemplate<double>;
