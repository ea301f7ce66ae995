// A calendar view on the screen's root, as the application shows it, for the benchmarks of the
// month, week and day views: the shared selection it reads, a listener standing in for the
// application, and the reload-plus-repaint loop they all time.
#pragma once

#include <benchmark/benchmark.h>

#include "PLAppContext.h"
#include "PLDate.h"
#include "PLListener.h"
#include "PLScreen.h"
#include "PLTime.h"
#include "PLView.h"

template <class View>
struct BenchViewScreen {
    PLListener application;
    PLView root{0, PLPoint(0, 0), PLSize(320, 240)};
    PLDate selected;
    PLTime time{8, 0, 0};
    View* view = nullptr;

    // `make(&selected, &time, &application)` makes the view; the root owns it once added.
    template <class Make>
    BenchViewScreen(PLDate shown, Make make) : selected(shown) {
        PLAppContext::ResetInstance();
        Display().SetRoot(&root);
        view = make(&selected, &time, &application);
        root.AddSubPane(view, false);
    }
    ~BenchViewScreen() { Display().SetRoot(nullptr); }

    static PLScreen& Display() { return PLAppContext::GetInstance()->GetScreen(); }

    // The measured loop: the view's reload (store query and layout) and a full repaint.
    void ReloadRepaint(benchmark::State& state) {
        for (auto _ : state) {
            view->Reload(0);
            Display().PaintAll();
            benchmark::DoNotOptimize(Display().GetFramebuffer().Pixels());
        }
    }
};
