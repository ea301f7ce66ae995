// The gallery's screens: every widget of the library with the reactions a view would give it.
#include "GalleryPages.h"

#include <cstdio>
#include <memory>
#include <string>

#include "GalleryApp.h"
#include "GalleryScreen.h"
#include "PLMessage.h"
#include "PLTime.h"
#include "PLTimeStamp.h"
#include "VtWidgets.h"

namespace {

PLMenu* Menu(GalleryScreen& screen, uint32_t id, long rows,
             std::initializer_list<std::pair<const char*, uint32_t>> items) {
    PLMenu* menu = screen.GetApp().Keep(MakeVtMenu(kEmptyString, id, rows, nullptr));
    for (const auto& [label, itemID] : items) {
        menu->AddMenuItem(new PLMenuItem(label, itemID));
    }
    return menu;
}

VtStaticText* Status(GalleryScreen& screen, uint32_t id, PLPoint at, PLSize size,
                     const char* text) {
    return screen.Add(
        MakeStaticText(id, at, size, text, 1, false, 0, PLRGBColor(0, 70, 180), nullptr));
}

VtEditField* Field(GalleryScreen& screen, uint32_t id, PLPoint at, PLSize size, const char* text,
                   long limit, const char* caption, long captionWidth, bool singleLine = true) {
    return screen.Add(MakeVtEditField(id, at, size, text, singleLine, -1, 0, 1, limit, caption, -1,
                                      captionWidth, nullptr, true, kVtEditFieldRect, -1, true));
}

// Raises the input method for a field's press, as the editors of the calendar do.
void OpenInputFor(IMEManager& ime, GalleryScreen& screen, VtEditField& field, long mode) {
    if (!field.GetEditor()->IsEditable()) {
        return;
    }
    ime.Open(mode, &screen);
    ime.Attach(field.GetEditor());
}

std::string TimeResult(long result, const VtTimePickerDialog& dialog) {
    if (result != 0) {
        return "time " + std::to_string(result);
    }
    // The caller's reading of a 12-hour result: 12 AM is hour 0, PM adds 12 except to 12.
    long hour = dialog.GetHour();
    if (dialog.Is12Hour() == 1) {
        const bool am = dialog.GetSuffix() == "AM";
        hour = hour == 12 ? (am ? 0 : 12) : (am ? hour : hour + 12);
    }
    char text[48];
    std::snprintf(text, sizeof text, "time %ld %ld:%02ld", result, hour, dialog.GetMinute());
    return text;
}

}  // namespace

void BuildButtonsPage(GalleryScreen& screen) {
    GalleryArt& art = screen.GetApp().Art();
    screen.Add(MakeBmpViewButton(101, PLPoint(36, 8), nullptr, "Push", kVtButtonPush, false, false,
                                 nullptr));
    screen.Add(MakeBmpViewButton(102, PLPoint(36, 80), nullptr, "Toggle", kVtButtonToggle, false,
                                 false, nullptr));
    auto* family = screen.Add(MakeBmpViewButton(103, PLPoint(36, 160), art.ButtonFamily(), "Family",
                                                kVtButtonPush, false, false, nullptr));
    family->SetTextColor(VtTheme::kWhite, false);
    screen.Add(MakeBmpViewButton(104, PLPoint(68, 8), nullptr, "Disabled", kVtButtonPush, false,
                                 true, nullptr));
    auto* familyOff = screen.Add(MakeBmpViewButton(105, PLPoint(68, 160), art.ButtonFamily(), "Off",
                                                   kVtButtonPush, false, true, nullptr));
    familyOff->SetTextColor(VtTheme::kWhite, false);
    screen.Add(MakeVtGeneralButton(106, PLPoint(100, 8), 224, "General button"));
    screen.Add(MakeBmpBarButton(107, PLPoint(136, 8), PLSize(36, 110), nullptr, "Bar",
                                kVtButtonPush, false, false, nullptr));
    screen.Add(MakeBmpBarButton(108, PLPoint(136, 122), PLSize(36, 110), nullptr, "Bar toggle",
                                kVtButtonToggle, true, false, nullptr));
    screen.Add(MakeCSTBackButton(109, PLPoint(176, 8)));
    screen.Add(MakeCSTMenuPopupButton(110, PLPoint(176, 56), nullptr, kVtPopupUp, false, false,
                                      true, nullptr));
    screen.Add(MakeCSTExitButton(111, PLPoint(176, 104)));
    PLMenu* menu = Menu(screen, 113, 6, {{"First", 1131}, {"Second", 1132}});
    screen.Add(MakeTextPopupButton(112, PLPoint(176, 152), PLSize(36, 80), 1, "Popup", menu,
                                   kVtPopupUp, true, false, true, nullptr));
}

void BuildMenusPage(GalleryScreen& screen) {
    PLMenu* actions = Menu(screen, 210, 6,
                           {{"New event", 2101},
                            {"Go to date", 2102},
                            {"Delete all", 2103},
                            {"Settings", 2104},
                            {"Share", 2105}});
    actions->EnableItem(2103, false);
    actions->EnableItem(2105, false);
    screen.Add(MakeTextPopupButton(201, PLPoint(36, 8), PLSize(30, 110), 1, "Actions", actions,
                                   kVtPopupDown, false, false, true, nullptr));
    PLMenu* longMenu = Menu(screen, 211, 6,
                            {{"January", 1},
                             {"February", 2},
                             {"March", 3},
                             {"April", 4},
                             {"May", 5},
                             {"June", 6},
                             {"July", 7},
                             {"August", 8},
                             {"September", 9}});
    screen.Add(MakeTextPopupButton(202, PLPoint(36, 122), PLSize(30, 110), 1, "Month", longMenu,
                                   kVtPopupDown, true, false, true, nullptr));
    PLMenu* empty = Menu(screen, 212, 6, {});
    screen.Add(MakeTextPopupButton(203, PLPoint(72, 8), PLSize(30, 110), 1, "Empty menu", empty,
                                   kVtPopupDown, false, false, true, nullptr));

    PLMenu* alarm = screen.GetApp().Keep(MakeVtComboMenu(kEmptyString, 213, nullptr));
    for (const auto& [label, id] : {std::pair<const char*, uint32_t>{"No alarm", 11530},
                                    {"On time", 11531},
                                    {"1 minute", 11532},
                                    {"5 minutes", 11533},
                                    {"1 hour", 11537},
                                    {"1 day", 11540}}) {
        alarm->AddMenuItem(new PLMenuItem(label, id));
    }
    alarm->SetSelectedItemByIndex(1);
    screen.Add(MakeVtComboControl(204, PLPoint(108, 8), PLSize(27, 224), alarm, 70, "Alarm"));

    PLMenu* colours = screen.GetApp().Keep(MakeVtComboColorMenu(kEmptyString, 214, nullptr));
    const struct {
        const char* label;
        PLRGBColor color;
    } swatches[] = {{"Yellow", {255, 204, 0}}, {"Red", {255, 0, 0}},     {"Dark red", {204, 0, 0}},
                    {"Orange", {255, 153, 0}}, {"Green", {0, 221, 0}},   {"Grey", {153, 153, 153}},
                    {"Sky", {51, 204, 255}},   {"Lemon", {255, 255, 0}}, {"Violet", {153, 51, 255}},
                    {"Forest", {0, 136, 0}}};
    uint32_t id = 11544;
    for (const auto& swatch : swatches) {
        colours->AddMenuItem(new VtComboMenuItem(swatch.label, id++, swatch.color));
    }
    auto* colour = screen.Add(
        MakeVtComboControl(205, PLPoint(142, 8), PLSize(27, 224), colours, 70, "Colour"));
    colour->SetValue(11547);
    PLMenu* none = screen.GetApp().Keep(MakeVtComboMenu(kEmptyString, 215, nullptr));
    screen.Add(MakeVtComboControl(206, PLPoint(176, 8), PLSize(27, 224), none, 70, "Empty"));
}

void BuildFieldsPage(GalleryScreen& screen) {
    IMEManager* ime = screen.GetApp().Keep(IMEManagerFactory::createIMEManager());
    ime->RegisterView(&screen);
    auto* name = Field(screen, 301, PLPoint(32, 4), PLSize(30, 232), "", 10, "Name", 60);
    auto* count = Field(screen, 302, PLPoint(64, 4), PLSize(30, 100), "10", 2, "Count", 60);
    count->GetEditor()->SetAcceptedChars("0123456789");
    // A ten-character date needs a box of about 96 pixels.
    auto* date = Field(screen, 303, PLPoint(64, 108), PLSize(30, 128), "2026-11-21", 10, "Day", 32);
    date->GetEditor()->SetEditable(false);
    auto* notes = Field(screen, 304, PLPoint(96, 4), PLSize(50, 232), "", 40, "", 0, false);
    screen.Add(MakeCheckbox(305, PLPoint(150, 4), PLSize(26, 120), "Lunar dates", false, nullptr,
                            nullptr));
    auto* locked = screen.Add(
        MakeCheckbox(306, PLPoint(150, 124), PLSize(26, 112), "Locked", true, nullptr, nullptr));
    locked->SetEnabled(false, false);
    VtRadioButton* radios[3] = {screen.Add(MakeRadioButton(307, PLPoint(178, 4), PLSize(26, 76),
                                                           "Day", true, nullptr, nullptr)),
                                screen.Add(MakeRadioButton(308, PLPoint(178, 80), PLSize(26, 76),
                                                           "Week", false, nullptr, nullptr)),
                                screen.Add(MakeRadioButton(309, PLPoint(178, 160), PLSize(26, 76),
                                                           "Month", false, nullptr, nullptr))};
    screen.SetHandler([&screen, ime, name, count, date, notes, radios](PLMessage& message) {
        const uint32_t sender = message.GetSenderID();
        if (message.GetMessageID() == kPLMsgEditPressed) {
            if (sender == 301) {
                OpenInputFor(*ime, screen, *name, kIMEAll);
            } else if (sender == 302) {
                OpenInputFor(*ime, screen, *count, kIMEDigits);
            } else if (sender == 304) {
                OpenInputFor(*ime, screen, *notes, kIMEAll);
            } else if (sender == 303) {
                // A read-only date field opens the date dialog, as the repeat editors do.
                std::unique_ptr<VtCalendarDateDialog> dialog(MakeVtCalendarDateDialog(
                    PLPoint(266, 212), PLDate(2026, 11, 21), 1, 11004, "OK", 11005, "Cancel",
                    0x3F3F3F3F, kEmptyString, 50008, nullptr));
                if (dialog->ModalDialog() == 11004) {
                    date->SetString(PLDate2PLString(dialog->GetDate(), 0), true);
                }
            }
        } else if (message.GetMessageID() == kPLMsgControl && sender >= 307 && sender <= 309) {
            for (VtRadioButton* radio : radios) {
                radio->SetOnState(radio->GetID() == sender ? 1 : 0, true);
            }
        }
    });
}

void BuildLabelsPage(GalleryScreen& screen) {
    screen.Add(MakeStaticText(401, PLPoint(32, 4), PLSize(22, 232), "Left aligned", 1, false, 0,
                              PLRGBColor(-1, false), nullptr));
    screen.Add(MakeStaticText(402, PLPoint(54, 4), PLSize(22, 232), "Centred", 0, false, 0,
                              PLRGBColor(-1, false), nullptr));
    screen.Add(MakeStaticText(403, PLPoint(76, 4), PLSize(22, 232), "Right aligned", 2, false, 0,
                              PLRGBColor(204, 0, 0), nullptr));
    screen.Add(MakeStaticText(404, PLPoint(98, 4), PLSize(30, 232), "UC24 large", -1, false,
                              PLFourCC("UC24"), PLRGBColor(0, 102, 255), nullptr));
    screen.Add(MakeStaticText(405, PLPoint(128, 4), PLSize(40, 232),
                              "A label that is too long for one line wraps onto the next", -1, true,
                              0, PLRGBColor(-1, false), nullptr));
    screen.Add(MakeStaticText(406, PLPoint(168, 4), PLSize(22, 232),
                              "\xE6\x97\xA5\xE5\x8E\x86 "
                              "\xE5\x86\x9C\xE5\x8E\x86 CJK",
                              -1, false, 0, PLRGBColor(-1, false), nullptr));
    screen.Add(MakeStaticText(407, PLPoint(190, 4), PLSize(22, 232), "Bad \xFF\xC3 bytes \xE2\x82",
                              -1, false, 0, PLRGBColor(-1, false), nullptr));
}

void BuildCheckListPage(GalleryScreen& screen) {
    // The check top bar replaces the screen's plain title bar.
    screen.FindPane(500 + 99)->Hide(false);
    auto* bar = screen.Add(
        MakeVtCheckTopBar(501, PLPoint(0, 0), kPLScreenWidth, "Delete", "Select all", 0, 0, 0));
    auto* list = screen.Add(MakeVtListViewContainer(PLPoint(29, 0), PLSize(150, 240), kVtCheckMany,
                                                    true, false, 20, 30, 502, nullptr, true, true));
    const char* texts[] = {"Dentist",      "Team meeting", "Lunch (fixed)", "Gym",
                           "Call parents", "Flight",       "Book club",     "Laundry"};
    for (size_t i = 0; i < 8; ++i) {
        PLBitmap* icon = i % 3 == 0 ? screen.GetApp().Art().RowIcon() : nullptr;
        VtListRow* row = MakeCheckBoxListRow(icon, texts[i], kEmptyString, nullptr, nullptr,
                                             uint32_t(5100 + i), -1, -1, false, i == 2);
        row->SetColumnWidth(icon != nullptr ? 30 : 0, 0, 0, 0);
        list->AppendRow(row, false);
    }
    auto* status = Status(screen, 503, PLPoint(182, 4), PLSize(28, 232), "checked: none");
    screen.SetKeyTarget(list);
    screen.SetHandler([list, bar, status](PLMessage& message) {
        const uint32_t kind = message.GetMessageID();
        if (kind == kPLMsgUp && message.GetSenderID() == 501) {
            const bool all = message.GetUserMessageID() == kVtTopBarCheckAll;
            for (size_t i = 1; i <= list->GetRowCount(); ++i) {
                if (all) {
                    list->CheckRowByIndex(i);
                } else {
                    list->UnCheckRowByIndex(i);
                }
            }
        }
        if (kind != kVtListCheckNotice && kind != kVtListFocusNotice && kind != kPLMsgUp) {
            return;
        }
        PLVector<long> checked;
        const size_t count = list->GetCheckedRows(checked);
        // The bar's box follows the rows, as the delete dialog keeps it.
        bar->SetCheckStatus(count == list->GetRowCount() ? 1 : 0, true);
        std::string text = "checked:";
        for (long index : checked) {
            text += " " + std::to_string(index);
        }
        if (count == 0) {
            text += " none";
        }
        text += " focus " + std::to_string(list->GetFocusedRowIndex());
        status->SetString(PLBasicString<char>(text), true);
    });
}

void BuildRadioListPage(GalleryScreen& screen) {
    auto* list = screen.Add(MakeVtListViewContainer(PLPoint(29, 0), PLSize(150, 240), kVtCheckOne,
                                                    true, true, 20, 30, 601, nullptr, true, true));
    const char* kinds[] = {"No repetition", "Daily", "Weekly", "Monthly", "Yearly"};
    for (size_t i = 0; i < 5; ++i) {
        VtListRow* row = MakeRadioButtonListRow(nullptr, kinds[i], kEmptyString, nullptr, nullptr,
                                                uint32_t(6011 + i), -1, 1, true, false);
        row->SetColumnWidth(0, 160, 0, 0);
        list->AppendRow(row, false);
    }
    list->CheckRowByIndex(1, false);
    list->FocusRowByIndex(1, false);
    auto* status = Status(screen, 602, PLPoint(182, 4), PLSize(28, 232), "chosen: No repetition");
    screen.SetKeyTarget(list);
    screen.SetHandler([list, status](PLMessage& message) {
        if (message.GetMessageID() != kVtListCheckNotice &&
            message.GetMessageID() != kVtListFocusNotice) {
            return;
        }
        PLVector<long> checked;
        list->GetCheckedRows(checked);
        const VtListRow* row =
            checked.IsEmpty() ? nullptr : list->GetRowByIndex(size_t(checked[0]));
        std::string text = "chosen: ";
        text += row != nullptr ? row->GetString().str() : "none";
        status->SetString(PLBasicString<char>(text), true);
    });
}

void BuildScrollPage(GalleryScreen& screen) {
    IMEManager* ime = screen.GetApp().Keep(IMEManagerFactory::createIMEManager());
    ime->RegisterView(&screen);
    auto* container =
        screen.Add(MakeVtScrollContainer(701, PLPoint(29, 0), PLSize(184, 240), true, false, 20,
                                         true, PLRect(1, 1, 1, 1), nullptr, true));
    container->GetContentPane()->SetScrollSteps(70, 30, 1);
    container->GetContentPane()->SetHasBmpBackground(true, true);
    std::vector<VtEditField*> fields;
    for (int i = 0; i < 10; ++i) {
        const int top = 4 + i * 36;
        const std::string label = "Row " + std::to_string(i + 1);
        container->GetContentPane()->AddSubPane(
            MakeStaticText(uint32_t(720 + i), PLPoint(top, 4), PLSize(30, 60), label.c_str(), -1,
                           false, 0, PLRGBColor(-1, false), nullptr),
            false);
        auto* field =
            MakeVtEditField(uint32_t(710 + i), PLPoint(top, 64), PLSize(30, 146),
                            std::to_string((i + 1) * 10).c_str(), true, -1, 0, 1, 2, kEmptyString,
                            1, 0, nullptr, true, kVtEditFieldRect, -1, true);
        field->GetEditor()->SetAcceptedChars("0123456789");
        field->AddListener(&screen);
        container->GetContentPane()->AddSubPane(field, false);
        fields.push_back(field);
    }
    fields.back()->GetEditor()->SetScroller(container);
    screen.SetKeyTarget(container->GetContentPane());
    screen.SetHandler([&screen, ime, container, fields](PLMessage& message) {
        const uint32_t kind = message.GetMessageID();
        if (kind == kPLMsgEditPressed) {
            for (VtEditField* field : fields) {
                if (field->GetID() == message.GetSenderID()) {
                    // The editors' way: shrink the area to what the keyboard leaves, then type.
                    container->SetSize(PLSize(106, kPLScreenWidth), true);
                    ime->Open(kIMEDigits, &screen);
                    ime->Attach(field->GetEditor());
                    screen.Redraw();
                }
            }
        } else if (kind == kPLMsgInputMethod) {
            const auto* state = dynamic_cast<const VtStateMessage*>(&message);
            if (state != nullptr && state->GetState() == kVtIMEClosed) {
                container->SetSize(PLSize(184, kPLScreenWidth), true);
                screen.Redraw();
            }
        }
    });
}

void BuildDialogsPage(GalleryScreen& screen) {
    const char* labels[] = {"Notice",        "Question",      "Auto notice", "Date",
                            "Time, 12-hour", "Time, 24-hour", "Hour only"};
    for (int i = 0; i < 7; ++i) {
        const int column = i % 2;
        const int row = i / 2;
        screen.Add(MakeVtGeneralButton(uint32_t(801 + i), PLPoint(34 + row * 36, 6 + column * 116),
                                       112, labels[i]));
    }
    auto* result = Status(screen, 810, PLPoint(182, 4), PLSize(28, 232), "result: none");
    // The dialogs start from the last result, as the calendar's pickers start from their field.
    auto date = std::make_shared<PLDate>(2026, 11, 21);
    auto time = std::make_shared<std::pair<long, long>>(9, 30);
    PLBitmap* icon = screen.GetApp().Art().NoticeIcon();
    screen.SetHandler([result, date, time, icon](PLMessage& message) {
        if (message.GetMessageID() != kPLMsgControl) {
            return;
        }
        std::string text;
        switch (message.GetSenderID()) {
            case 801: {
                std::unique_ptr<VtInfoDialog> dialog(MakeVtInfoDialog(
                    PLPoint(149, 228), icon, "The event was saved.", "It repeats every week.",
                    21000, "OK", 0, kEmptyString, 0, nullptr));
                text = "notice " + std::to_string(dialog->ModalDialog());
                break;
            }
            case 802: {
                std::unique_ptr<VtInfoDialog> dialog(
                    MakeVtInfoDialog(PLPoint(0, 228), icon, "Delete all events of this month?",
                                     kEmptyString, 21000, "OK", 21001, "Cancel", 0, nullptr));
                text = "question " + std::to_string(dialog->ModalDialog());
                break;
            }
            case 803: {
                std::unique_ptr<VtInfoDialog> dialog(MakeVtInfoDialog(
                    PLPoint(239, 228), icon, "Saved.", "This notice closes itself.", 21000, "OK", 0,
                    kEmptyString, 3000, nullptr));
                text = "notice " + std::to_string(dialog->ModalDialog());
                break;
            }
            case 804: {
                std::unique_ptr<VtCalendarDateDialog> dialog(
                    MakeVtCalendarDateDialog(PLPoint(266, 212), *date, 2, 11004, "OK", 11005,
                                             "Cancel", 0x3F3F3F3F, kEmptyString, 50008, nullptr));
                const long answer = dialog->ModalDialog();
                if (answer == 11004) {
                    *date = dialog->GetDate();
                }
                text = "date " + std::to_string(answer) + " " + PLDate2PLString(*date, 0).str();
                break;
            }
            case 805:
            case 806:
            case 807: {
                const uint32_t sender = message.GetSenderID();
                const long format = sender == 806 ? kPLTimeFormat24 : kPLTimeFormat12;
                const long mode = sender == 807 ? kVtTimeHourOnly : kVtTimeHourMinute;
                std::unique_ptr<VtTimePickerDialog> dialog(MakeVtTimePickerDialog(
                    time->first, time->second, format, "Start time", 0, "OK", 3, "Cancel", mode));
                const long answer = dialog->ModalDialog();
                text = TimeResult(answer, *dialog);
                if (answer == 0) {
                    *time = {dialog->GetHour24(), dialog->GetMinute()};
                }
                break;
            }
            default:
                return;
        }
        result->SetString(PLBasicString<char>(text), true);
    });
}

void BuildHeadersPage(GalleryScreen& screen) {
    // Each header moves its own date, as each main view moves the shared one. The month header
    // takes the place of the title bar, as in the main views.
    auto month = std::make_shared<PLDate>(2026, 11, 21);
    auto day = std::make_shared<PLDate>(2030, 12, 30);
    screen.FindPane(900 + 99)->Hide(false);
    screen.Add(MakeCalendarYearSelectControl(901, kVtHeaderMonth, month.get(), nullptr, false));
    auto* dayHeader =
        screen.Add(MakeCalendarYearSelectControl(902, kVtHeaderDay, day.get(), nullptr, false));
    dayHeader->SetLocation(PLPoint(60, 0), false);
    screen.Add(MakeStaticText(903, PLPoint(32, 4), PLSize(24, 232), "Month header (type 11)", -1,
                              false, 0, PLRGBColor(-1, false), nullptr));
    screen.Add(MakeStaticText(904, PLPoint(92, 4), PLSize(24, 232), "Day header (type 13)", -1,
                              false, 0, PLRGBColor(-1, false), nullptr));
    auto* status = Status(screen, 905, PLPoint(182, 4), PLSize(28, 232), "title taps: 0");
    auto taps = std::make_shared<int>(0);
    screen.SetHandler([month, day, status, taps](PLMessage& message) {
        if (message.GetMessageID() == kPLMsgUp && message.GetUserMessageID() == kVtHeaderTitle) {
            ++*taps;
            status->SetString(PLBasicString<char>("title taps: " + std::to_string(*taps)), true);
        }
    });
}
