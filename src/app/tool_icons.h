#pragma once

#include <QIcon>

// The tool bar's pictures, drawn in one consistent flat style.
class ToolIcons {
  public:
    enum Kind {
        Open,
        Save,
        Receive,
        Print,
        Preview,
        Export,
        Cut,
        Copy,
        Paste,
        Graph2D,
        Graph3D,
        Cascade,
        Tile,
        TileVertical,
        Arrange,
        Demo,
        Fit,
    };
    static QIcon Make(Kind kind);
};
