// demo-screen: builds a small pane tree (title, month-like grid, pictures, Latin and CJK text),
// paints it through the screen exactly as an application would, and writes the result as a PNG.
#include <cstdio>
#include <string>

#include "DemoGridPane.h"
#include "DemoTextPane.h"
#include "PLAppContext.h"
#include "PLApplication.h"
#include "PLScreen.h"
#include "PLView.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: demo-screen OUTPUT.png\n");
        return 2;
    }
    PLApplication application;
    PLAppContext::GetInstance()->SetApplication(&application);
    application.Initialize();
    PLView* root = application.GetRootView();
    root->AddSubPane(new PLThemeView(1, {0, 0}, {kPLScreenHeight, kPLScreenWidth}), false);
    root->AddSubPane(new DemoTextPane(2, {0, 0}, {53, kPLScreenWidth}), false);
    root->AddSubPane(new DemoGridPane(3, {53, 0}, {186, kPLScreenWidth}), false);
    root->AddSubPane(new DemoPicturePane(4, {239, 0}, {81, kPLScreenWidth}), false);

    PLScreen& screen = PLAppContext::GetInstance()->GetScreen();
    screen.PaintAll();
    std::string error;
    if (!screen.GetFramebuffer().SavePNG(argv[1], error)) {
        std::fprintf(stderr, "demo-screen: %s\n", error.c_str());
        return 1;
    }
    PLAppContext::GetInstance()->SetApplication(nullptr);
    return 0;
}
