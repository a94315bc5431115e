#pragma once

// The names of element attributes. Each has a short file name ("A_NAME"), the only form
// that appears in XML, and a display name ("Name") for captions and editors; both tables
// live in Attribute. 1 is the unknown attribute; 0 is not a valid id.
enum eAttrNameId : int {
    A_UNK = 1,
    A_INITSWDESC = 2,
    A_INITBUILDTSMP = 3,
    A_INITSAVETSMP = 4,
    A_LASTSWDESC = 5,
    A_LASTBUILDTSMP = 6,
    A_LASTSAVETSMP = 7,
    A_WILREND = 8,
    A_RENDID = 9,
    A_HILIGHT = 10,
    A_PNTTHICK = 11,
    A_LINTHICK = 12,
    A_FILL = 13,
    A_SIMOBJID = 14,
    A_OBJTYP = 15,
    A_OBJTYPID = 16,
    A_NAME = 17,
    A_OBJNAMEID = 18,
    A_CAPT = 19,
    A_QIKSET = 20,
    A_STOTYPE = 21,
    A_PARNAME = 22,
    A_NUM = 23,
    A_VAL = 24,
    A_STRVAL = 25,
    A_PARTYPE = 26,
    A_UNITS = 27,
    A_MULT = 28,
    A_MINVAL = 29,
    A_MAXVAL = 30,
    A_INDEX = 31,
    A_INTVAL = 32,
    A_DBLVAL = 33,
    A_FLTVAL = 34,
    A_BOOLVAL = 35,
    A_ANG = 36,
    A_ANGSP = 37,
    A_SP = 38,
    A_X = 39,
    A_Y = 40,
    A_Z = 41,
    A_R = 42,
    A_G = 43,
    A_B = 44,
    A_TOP = 45,
    A_LEFT = 46,
    A_WIDTH = 47,
    A_HEIGHT = 48,
    A_COMPTYP = 49,
};

// The first and last valid ids; the name tables have attrNameIdLast + 1 entries.
constexpr int attrNameIdFirst = A_UNK;
constexpr int attrNameIdLast = A_COMPTYP;

// True for an id that has an entry in the name tables.
constexpr bool IsValidAttrNameId(int id) { return id >= attrNameIdFirst && id <= attrNameIdLast; }
