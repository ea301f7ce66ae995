// Gallery screens laid out with the calendar's own coordinates and texts, to see that its densest
// screens stay legible: a repeat editor (rows of 30 pixels, 70-pixel radio labels, narrow
// choices) and the week and day views' cells and rows.
#include <memory>
#include <string>
#include <vector>

#include "GalleryApp.h"
#include "GalleryPages.h"
#include "GalleryScreen.h"
#include "PLFont.h"
#include "PLMessage.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"

namespace {

// Positions and sizes as the calendar writes them: x, y and width by height.
PLPoint At(int x, int y) {
    return PLPoint(y, x);
}
PLSize Size(int width, int height) {
    return PLSize(height, width);
}

VtEditField* NumberField(uint32_t id, int x, int y, int width, const char* text,
                         const char* caption = "", long captionWidth = 0) {
    auto* field = MakeVtEditField(id, At(x, y), Size(width, 30), text, true, -1, 0, 1, 2, caption,
                                  -1, captionWidth, nullptr, true, kVtEditFieldRect, -1, true);
    field->GetEditor()->SetAcceptedChars("0123456789");
    return field;
}

VtRadioButton* Radio(uint32_t id, int x, int y, int width, const char* text, bool on) {
    return MakeRadioButton(id, At(x, y), Size(width, 30), text, on, nullptr, nullptr);
}

VtStaticText* Label(uint32_t id, int x, int y, int width, const char* text) {
    return MakeStaticText(id, At(x, y), Size(width, 30), text, -1, false, 0, PLRGBColor(-1, false),
                          nullptr);
}

VtComboControl* Choice(GalleryScreen& screen, uint32_t id, int x, int width,
                       std::initializer_list<const char*> labels) {
    PLFont* font = PLFont::GetFont(PLFourCC("UC16"));
    auto* menu = static_cast<VtMenu*>(
        screen.GetApp().Keep(MakeVtComboMenu(kEmptyString, id + 100, nullptr)));
    uint32_t value = 1;
    for (const char* label : labels) {
        menu->AddMenuItem(new PLMenuItem(label, value++));
    }
    menu->SetSelectedItemByIndex(1);
    menu->SetFont(font);
    auto* choice = MakeVtComboControl(id, At(x, 63), Size(width, 27), menu, 0, kEmptyString);
    choice->SetFont(font, false);
    choice->SetValue(1, false);
    return choice;
}

// Turns on the radio that was tapped and the others of its group off.
void KeepOneOn(const std::vector<VtRadioButton*>& group, uint32_t tapped) {
    for (VtRadioButton* radio : group) {
        radio->SetOnState(radio->GetID() == tapped ? 1 : 0, true);
    }
}

bool InGroup(const std::vector<VtRadioButton*>& group, uint32_t id) {
    for (const VtRadioButton* radio : group) {
        if (radio->GetID() == id) {
            return true;
        }
    }
    return false;
}

}  // namespace

void BuildRepeatEditorPage(GalleryScreen& screen) {
    // The calendar's container is 210 high; here the log line takes its last 24 pixels.
    constexpr int kHeight = 186;
    IMEManager* ime = screen.GetApp().Keep(IMEManagerFactory::createIMEManager());
    ime->RegisterView(&screen);
    auto* container =
        screen.Add(MakeVtScrollContainer(1020, At(0, 29), Size(240, kHeight), true, false, 20,
                                         false, PLRect(1, 1, 1, 1), nullptr, true));
    container->GetContentPane()->SetScrollSteps(70, 30, 1);
    container->GetContentPane()->SetHasBmpBackground(true, true);
    container->GetScroller()->SetHasBmpBackground(true, true);
    container->GetScroller()->SetAutoScroll(true);
    auto* interval = NumberField(1002, 5, 0, 130, "1", "Every", 60);
    auto* day = NumberField(1004, 75, 30, 60, "21");
    auto* count = NumberField(1013, 105, 150, 50, "10");
    auto* until = MakeVtEditField(1015, At(95, 180), Size(110, 30), kEmptyString, true, -1, 0, 1,
                                  10, "", -1, 65, nullptr, true, kVtEditFieldRect, -1, true);
    until->GetEditor()->SetEditable(false);
    until->SetString(PLDate2PLString(PLDate(2026, 12, 21), 1), false);
    const std::vector<VtRadioButton*> kind{Radio(1003, 5, 30, 70, "Day", true),
                                           Radio(1005, 5, 60, 25, "", false)};
    const std::vector<VtRadioButton*> end{Radio(1011, 5, 120, 235, "Never", true),
                                          Radio(1012, 5, 150, 105, "After", false),
                                          Radio(1021, 5, 180, 90, "Until", false)};
    PLPane* panes[] = {
        interval,
        Label(1001, 135, 0, 105, "months"),
        kind[0],
        day,
        kind[1],
        Choice(screen, 1007, 30, 80, {"First", "Second", "Third", "Fourth", "Last"}),
        Choice(screen, 1009, 115, 102,
               {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"}),
        Label(1010, 5, 90, 235, "Ends"),
        end[0],
        end[1],
        count,
        Label(1014, 155, 150, 80, "times"),
        until,
        end[2]};
    for (PLPane* pane : panes) {
        pane->SetHasBmpBackground(true, true);
        pane->AddListener(&screen);
        container->AddSubPane(pane, false);
    }
    count->GetEditor()->AddListener(container->GetScroller());
    count->GetEditor()->SetScroller(container->GetScroller());
    screen.SetKeyTarget(container->GetContentPane());
    const std::vector<VtEditField*> numbers{interval, day, count};
    screen.SetHandler([&screen, ime, container, numbers, until, kind, end](PLMessage& message) {
        const uint32_t sender = message.GetSenderID();
        if (message.GetMessageID() == kPLMsgEditPressed) {
            for (VtEditField* field : numbers) {
                if (field->GetID() == sender) {
                    // The editors' way: the keypad takes the lower part, the rows the rest.
                    container->SetSize(Size(240, 106), true);
                    ime->Open(kIMEDigits, &screen);
                    ime->Attach(field->GetEditor());
                    screen.Redraw();
                }
            }
            if (sender == until->GetID()) {
                std::unique_ptr<VtCalendarDateDialog> dialog(MakeVtCalendarDateDialog(
                    PLPoint(266, 212), PLDate(2026, 12, 21), 1, 11004, "OK", 11005, "Cancel",
                    0x3F3F3F3F, kEmptyString, 50008, nullptr));
                if (dialog->ModalDialog() == 11004) {
                    until->SetString(PLDate2PLString(dialog->GetDate(), 1), true);
                }
            }
        } else if (message.GetMessageID() == kPLMsgInputMethod) {
            const auto* state = dynamic_cast<const VtStateMessage*>(&message);
            if (state != nullptr && state->GetState() == kVtIMEClosed) {
                container->SetSize(Size(240, kHeight), true);
                screen.Redraw();
            }
        } else if (message.GetMessageID() == kPLMsgControl) {
            for (const auto* group : {&kind, &end}) {
                if (InGroup(*group, sender)) {
                    KeepOneOn(*group, sender);
                }
            }
        }
    });
}

void BuildWeekDayRowsPage(GalleryScreen& screen) {
    GalleryArt& art = screen.GetApp().Art();
    const char* names[] = {"Mo", "Tu", "We", "Th", "Fr", "Sa", "Su"};
    // The week of 2026-11-16: today (the 21st) blue, the weekend red.
    const PLRGBColor numberColors[] = {VtTheme::kWhite, VtTheme::kWhite, VtTheme::kWhite,
                                       VtTheme::kWhite, VtTheme::kWhite, VtTheme::kBlue,
                                       VtTheme::kRed};
    for (int i = 0; i < 7; ++i) {
        auto* name = screen.Add(MakeBmpViewButton(uint32_t(1101 + i), At(37 + 26 * i, 29),
                                                  art.NameCellFamily(), names[i], kVtButtonPush,
                                                  false, false, nullptr));
        name->SetTextColor(VtTheme::kWhite, false);
        auto* number = screen.Add(MakeBmpViewButton(
            uint32_t(1111 + i), At(37 + 26 * i, 53), art.NumberCellFamily(),
            std::to_string(16 + i).c_str(), kVtButtonPush, false, false, nullptr));
        number->SetTextColor(numberColors[i], false);
        // The weekly repeat editor's day buttons: toggles 28 pixels apart.
        auto* toggle = screen.Add(MakeBmpViewButton(uint32_t(1121 + i), At(5 + 28 * i, 78),
                                                    art.DayButtonFamily(), names[i],
                                                    kVtButtonToggle, i == 5, false, nullptr));
        toggle->SetTextColor(i == 5 ? PLRGBColor(25, 125, 255) : VtTheme::kBlack, false);
    }
    auto* rows = screen.Add(MakeVtScrollContainer(1130, At(0, 108), Size(240, 107), true, false, 20,
                                                  true, PLRect(1, 1, 1, 1), nullptr, false));
    rows->GetScrollBar()->SetStep(30, 1);
    PLFont* font = PLFont::GetFont(PLFourCC("UC16"));
    for (int hour = 0; hour < 24; ++hour) {
        // The day view's rows: 30 high, an hour label at (3, 0); the morning in the 12-hour
        // form, the afternoon in the 24-hour one, so that both widest labels show.
        auto* row = new PLView(uint32_t(111335 + hour), PLPoint(30 * hour, 0), PLSize(30, 220));
        const std::string text =
            hour < 12 ? std::to_string(hour == 0 ? 12 : hour) + "am" : std::to_string(hour) + ":00";
        auto* label =
            MakeBmpViewButton(uint32_t(11310 + hour), PLPoint(3, 0), art.HourLabelFamily(),
                              text.c_str(), kVtButtonPush, false, false, nullptr);
        label->SetTextColor(VtTheme::kBlack, false);
        label->SetFont(font, false);
        label->AddListener(&screen);
        row->AddSubPane(label, false);
        if (hour % 3 == 0) {
            row->AddSubPane(MakeStaticText(uint32_t(1140 + hour), PLPoint(0, 47), PLSize(30, 170),
                                           "Team meeting in room 4", -1, false, 0,
                                           PLRGBColor(-1, false), nullptr),
                            false);
        }
        rows->AddSubPane(row, false);
    }
    rows->ScrollTo(8 * 30, false, false);
    screen.SetKeyTarget(rows->GetContentPane());
    screen.SetHandler([&screen](PLMessage& message) {
        // The day buttons show their state by their text colour, as the weekly editor does.
        const uint32_t sender = message.GetSenderID();
        if (message.GetMessageID() == kPLMsgControl && sender >= 1121 && sender <= 1127) {
            screen.FindPane(sender)->SetTextColor(
                message.GetUserMessageID() != 0 ? PLRGBColor(25, 125, 255) : VtTheme::kBlack, true);
        }
    });
}
