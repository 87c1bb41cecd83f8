/// What Qt names and this program never needs, so that the linker takes these in the place of the real ones.

// With its own types: the name below is declared in none of the headers that stay.
#include <windows.h>

/// A font engine that this Qt is built without, because it needs parts of DirectWrite that the compiler's headers lack.
/// Qt's printing names it all the same; there is never an object of it to ask.
class QWindowsFontEngineDirectWrite {
 public:
  HFONT createHFONT() const;
};

HFONT QWindowsFontEngineDirectWrite::createHFONT() const { return nullptr; }

struct IDirect3D9;

/// Qt asks the graphics card for its maker before it places its first window, for windows that draw with OpenGL; this
/// Qt is built without that. The answer would load the card's complete driver into the program and keep it there.
/// "None" is an answer that Qt knows how to take.
extern "C" IDirect3D9* WINAPI Direct3DCreate9(UINT /*version*/) { return nullptr; }
