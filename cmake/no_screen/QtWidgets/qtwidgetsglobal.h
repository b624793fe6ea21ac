// Found before Qt's own header of this name in rooms that must not know a screen.
#error "This room must not use Qt's Widgets module"
