// The gallery's screens, one builder per family of widgets. Ids: screen N*100 holds widgets
// N*100+1 and up; its title bar is N*100+99.
#pragma once

class GalleryScreen;

void BuildButtonsPage(GalleryScreen& screen);
void BuildMenusPage(GalleryScreen& screen);
void BuildFieldsPage(GalleryScreen& screen);
void BuildLabelsPage(GalleryScreen& screen);
void BuildCheckListPage(GalleryScreen& screen);
void BuildRadioListPage(GalleryScreen& screen);
void BuildScrollPage(GalleryScreen& screen);
void BuildDialogsPage(GalleryScreen& screen);
void BuildHeadersPage(GalleryScreen& screen);
// Laid out with the calendar's coordinates.
void BuildRepeatEditorPage(GalleryScreen& screen);
void BuildWeekDayRowsPage(GalleryScreen& screen);
