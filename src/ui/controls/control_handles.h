#pragma once

#include <windows.h>

namespace tavrin::ui {

// Every child control, in order of creation.
struct Controls {
    HWND toolbar = nullptr;
    HWND filterEdit = nullptr;
    HWND fromLabel = nullptr;
    HWND fromPicker = nullptr;
    HWND toLabel = nullptr;
    HWND toPicker = nullptr;
    HWND statusBar = nullptr;
    HWND tree = nullptr;
    HWND spareStatic = nullptr;
    HWND sourcesFrame = nullptr;
    HWND detailsFrame = nullptr;
    HWND tab = nullptr;
    HWND tabPage = nullptr;
    HWND detailsEdit = nullptr;
    HWND list = nullptr;
    HWND headerPane = nullptr;
    HWND loadedCaption = nullptr;
    HWND totalCaption = nullptr;
    HWND loadedValue = nullptr;
    HWND totalValue = nullptr;
    HWND nodeName = nullptr;
    HWND sourcesCaption = nullptr;
    HWND sourcesSearch = nullptr;
    HWND sourcesList = nullptr;
    HWND showAllSources = nullptr;
};

}  // namespace tavrin::ui
