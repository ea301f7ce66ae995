// A share library without DestroyShareView: the calendar must close it again without calling it.
// Its dialog answers 99, a value no real sheet returns, so a call would show in the result.
#include "PLBasicString.h"
#include "PLVector.h"

extern "C" int MakeVtShareDlg(PLVector<PLBasicString<char>>&) {
    return 99;
}
