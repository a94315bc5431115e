#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/Component.h"
#include "geometry/VectorQUICK.h"

class CElement;

// A dense matrix that is also a simulation object: it has a name and parameters, can be a
// child of any object and saves itself as an element with the parameters dim1, dim2 and
// one indexed value per element. Coordinates and Direction build on it.
//
// Two buffers of dim1 * dim2 elements, row-major (element (i, j) at j + dim2 * i), hold the
// plain and the transformed frame; Transformed(bool) chooses the one that every read and
// write goes to. The Euclidean length over all elements is cached and recomputed lazily on
// the next read after a write; a matrix marked normalised is then also rescaled to unit
// length. Reading may therefore write, so a matrix must not be read by two threads at once.
template <typename X>
class MatrixTemplate : public Component {
public:
    // A square matrix starts as the identity, any other as zero.
    MatrixTemplate(int dim1 = 1, int dim2 = 1);
    // Takes the other's buffer selection and its active buffer.
    MatrixTemplate(const MatrixTemplate& other);
    MatrixTemplate& operator=(const MatrixTemplate& other);
    ~MatrixTemplate() override;

    // A non-positive dimension becomes 1. A change of size frees both buffers and marks the
    // matrix changed; missing buffers are allocated zeroed. Same size: contents stay.
    bool SetDim(int dim1, int dim2);
    // Resizes keeping the cells inside the old size; new diagonal cells are 1, others 0.
    bool UpdateDim(int dim1, int dim2);
    // 1 gives dim1, 2 gives dim2, anything else -1.
    int GetDim(int which) const;

    // Selects the buffer that reads and writes go to.
    void Transformed(bool transformedFrame);
    bool IsTransformed() const { return transformed; }
    // Zeroes both buffers; the buffer selection stays.
    bool SetZero();
    // False for a non-square matrix.
    bool SetIdentity();

    // A reference to the element, after the lazy update unless noUpdate. Out of range: a
    // reference to the error cell.
    X& Get(int index, bool noUpdate = false);
    X& Get(int row, int col, bool noUpdate = false);
    // The same without bounds check or update.
    X& quickGet(int index) { return Active()[index]; }
    X& quickGet(int row, int col) { return Active()[col + dim2 * row]; }
    void quickSet(int index, X value) {
        Active()[index] = value;
        changed = true;
    }
    void quickSet(int row, int col, X value) {
        Active()[col + dim2 * row] = value;
        changed = true;
    }
    // Bounds-checked writes; false outside the matrix.
    bool SetValue(int index, X value);
    bool SetValue(int row, int col, X value);
    // A column of 2, 3 or 4 values; a matrix of another element count becomes n by 1.
    bool SetValues(X a, X b);
    bool SetValues(X a, X b, X c);
    bool SetValues(X a, X b, X c, X d);

    X GetLength();
    // Scales to length l; a zero l or a zero length zeroes the matrix.
    bool SetLength(X l);
    // Divides by the length; false, with the elements left alone, for a zero matrix.
    bool Normalise();
    // Normalises (when marked so) and recomputes the length if anything was written.
    bool UpdateChanges();
    bool IsNormalised() const { return normalised; }

    // Sums over all elements; -1.0 when the sizes differ. diff is the Euclidean distance,
    // DiffDot(a, b) is (a - this) . (b - this), DotDiff(a, b) is this . (a - b).
    X Dot(MatrixTemplate& other);
    X diff(MatrixTemplate& other);
    X DiffDot(MatrixTemplate& a, MatrixTemplate& b);
    X DotDiff(MatrixTemplate& a, MatrixTemplate& b);
    // Degrees between this and other.
    X Angle(MatrixTemplate& other);
    // Degrees at this point between the directions to a and to b.
    X Angle(MatrixTemplate& a, MatrixTemplate& b);
    // this = a x b; false unless both are 3 by 1.
    bool SetCross(MatrixTemplate& a, MatrixTemplate& b);

    // Copies the buffer selection, then CopyTr.
    bool Copy(const MatrixTemplate& other);
    // Takes the other's size and its active buffer into this one's active buffer, and its
    // multiplyFailed mark.
    bool CopyTr(const MatrixTemplate& other);

    // this += s * other; false when the sizes differ.
    bool PlusProd(MatrixTemplate& other, X s);
    MatrixTemplate& operator+=(MatrixTemplate& other);
    MatrixTemplate& operator-=(MatrixTemplate& other);
    MatrixTemplate& operator*=(X s);
    MatrixTemplate& operator/=(X s);
    MatrixTemplate operator-(MatrixTemplate& other);
    // this = this * other, through the scratch matrix. When the inner dimensions differ no
    // product is formed: the scratch is marked failed and still copied back, so this
    // matrix takes the scratch's previous size and content.
    MatrixTemplate& operator*=(MatrixTemplate& other);
    // this = other * this, through the scratch matrix, with the same failure rule.
    MatrixTemplate& operator^=(MatrixTemplate& other);
    bool Transpose();
    int MultiplyFailed() const { return multiplyFailed; }

    // |a . (b x c)| / (|a||b||c| + (a.b)|c| + (a.c)|b| + (b.c)|a|): the tangent of half the
    // solid angle of the triangle a, b, c seen from the origin, used as the solid angle.
    static X GetSolidAngle(MatrixTemplate& a, MatrixTemplate& b, MatrixTemplate& c);
    static X GetSolidAngle(const VectorQUICK& a, const VectorQUICK& b, const VectorQUICK& c);

    // By expansion over all permutations (n factorial terms; matrices here are 2 to 4
    // wide). 0, with a message, for a matrix that is not square and for a 1 by 1 matrix.
    X Determinant();
    // The expansion over the first count rows and columns; the first two arguments are
    // not used.
    X Determinant(int unusedRow, int unusedCol, int count);
    // The unsigned minor of (row, col); Invert applies the sign.
    X Cofactor(int row, int col);
    // Inverts in place. Fails, leaving the matrix as it was, when the determinant is at
    // most 0.0001 - including every negative determinant. A 2 by 2 result comes out
    // transposed relative to the true inverse; larger ones are exact.
    bool Invert();

    bool FromXml(CElement* element) override;
    bool ToXml(CElement* element, bool leaveOutExpanded) override;
    // Takes dim1, dim2 and the indexed values from the parameters into the elements.
    bool QuickSetToChildren(bool force) override;
    // Writes dim1, dim2 and one indexed value per element into the parameters.
    bool QuickSetFromChildren() override;
    void Print() override;
    using Component::CheckEq;
    // Not a plain comparison: takes the other's dimensions into this matrix, is false for
    // any even dimension, and compares the elements exactly in the buffer opposite to the
    // one that Get would read.
    virtual bool CheckEq(MatrixTemplate<double>* other);

protected:
    // The interactive edits of a point: "movex" adds x to the first element, "movey" y to
    // the second, "movexy" both, "scale" multiplies all by x. False for any other action.
    bool MoveByAction(const std::string& action, double x, double y);
    X* Active() { return transformed ? dataTrans : data; }
    const X* Active() const { return transformed ? dataTrans : data; }
    int Count() const { return dim1 * dim2; }
    bool SameSize(const MatrixTemplate& other) const {
        return dim1 == other.dim1 && dim2 == other.dim2;
    }

    bool transformed = false;
    int multiplyFailed = 0;
    int detSign = 1;
    int permCount = 1;
    X* data = nullptr;
    X* dataTrans = nullptr;
    int dim1 = 0;
    int dim2 = 0;
    bool changed = true;
    X length = 0;
    X determinant = 0;
    X cofactor = 0;
    X errorValue = -1.0;
    bool normalised = false;
    MatrixTemplate* scratch = nullptr;

private:
    void FreeBuffers();
    void CalcLength();
    MatrixTemplate& Scratch();
    // Multiplies left by right into the scratch and copies it back, or marks it failed.
    MatrixTemplate& ProductIntoThis(MatrixTemplate& left, MatrixTemplate& right);
    void splitPerm(std::vector<int>& perm, int n, int k, const std::function<void()>& addTerm);
    void addToDet(const std::vector<int>& perm, int n);
    void printPerm(const std::vector<int>& perm, int n);
    void addToCofactor(const std::vector<int>& perm, int n, int row,
                       const std::vector<int>& columns);
};

extern template class MatrixTemplate<double>;
