// Colours of entities and layers.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

// A colour as an entity states it: ByLayer, ByBlock, an index 1..255, or red, green, blue.
class AcCmEntityColor {
public:
    enum ColorMethod {
        kByLayer = 0xC0,  // that of the entity's layer
        kByBlock = 0xC1,  // that of the reference around it
        kByColor = 0xC2,  // red, green, blue: group 420
        kByACI = 0xC3,    // an index: group 62
        kNone = 0xC8      // not drawn
    };
    enum ACIcolorMethod {
        kACIbyBlock = 0,  // the numbers of group 62
        kACIRed = 1,
        kACIYellow = 2,
        kACIGreen = 3,
        kACICyan = 4,
        kACIBlue = 5,
        kACIMagenta = 6,
        kACIforeground = 7,  // black on white, white on black
        kACIbyLayer = 256,
        kACInone = 257
    };

    AcCmEntityColor() = default;
    // Of kByLayer, kByBlock and kNone; the others need a value.
    explicit AcCmEntityColor(ColorMethod method) : m_value(Adesk::UInt32(method) << 24) {}
    // 0..255 each.
    AcCmEntityColor(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
        m_value = Adesk::UInt32(kByColor) << 24 | Adesk::UInt32(red) << 16 |
                  Adesk::UInt32(green) << 8 | Adesk::UInt32(blue);
    }

    ColorMethod colorMethod() const { return static_cast<ColorMethod>(m_value >> 24); }

    // 0 ByBlock, 1..255, 256 ByLayer, 257 none; for red-green-blue colours the nearest index.
    Adesk::UInt16 colorIndex() const;
    // eInvalidInput above 257.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index);

    // Makes it a red-green-blue colour; always eOk.
    Acad::ErrorStatus setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);
    // of a colour that isByColor(); else without meaning
    Adesk::UInt8 red() const { return Adesk::UInt8(m_value >> 16); }
    Adesk::UInt8 green() const { return Adesk::UInt8(m_value >> 8); }
    Adesk::UInt8 blue() const { return Adesk::UInt8(m_value); }

    bool isByLayer() const { return colorMethod() == kByLayer; }
    bool isByBlock() const { return colorMethod() == kByBlock; }
    bool isByColor() const { return colorMethod() == kByColor; }
    bool isByACI() const { return colorMethod() == kByACI; }
    bool isNone() const { return colorMethod() == kNone; }

    Adesk::UInt32 color() const { return m_value; }  // method and value in one number
    bool operator==(const AcCmEntityColor& other) const { return m_value == other.m_value; }
    bool operator!=(const AcCmEntityColor& other) const { return m_value != other.m_value; }

protected:
    // The method in the highest byte, below it either the index or 0xRRGGBB.
    Adesk::UInt32 m_value = Adesk::UInt32(kByLayer) << 24;
};

// The colour class of the interface. Names of colour books are not kept here; a drawing that has
// them keeps them in its file.
// The same as a value that calls take.
class AcCmColor : public AcCmEntityColor {
public:
    AcCmColor() = default;  // ByLayer
    AcCmColor(const AcCmEntityColor& color) : AcCmEntityColor(color) {}
};
