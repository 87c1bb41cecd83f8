/// Replacements for symbols that Qt refers to but this program never uses; the linker finds them first.

// With its own types: none of the remaining headers declares the name below.
#include <windows.h>

/// A font engine that this Qt is built without, because the compiler's headers lack parts of DirectWrite. Qt's printing
/// refers to it, but no object of it ever exists.
class QWindowsFontEngineDirectWrite {
 public:
  HFONT createHFONT() const;
};

HFONT QWindowsFontEngineDirectWrite::createHFONT() const { return nullptr; }

struct IDirect3D9;

/// Before its first window Qt looks up the graphics card's vendor, for OpenGL, which this Qt is built without. That
/// would load the complete graphics driver into the program for its lifetime. Qt can handle a null result.
extern "C" IDirect3D9* WINAPI Direct3DCreate9(UINT /*version*/) { return nullptr; }
