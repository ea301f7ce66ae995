// The input method: the keyboard on the screen's root, typed text through the loop's text sink
// into the attached editor (digits only on the keypad), and the closing notice to the view.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "IMEManagerFactory.h"
#include "PLAppContext.h"
#include "PLEventLoop.h"
#include "PLScreen.h"
#include "PLView.h"
#include "VtStateMessage.h"
#include "VtTextFactory.h"

namespace {

class EditorView : public PLView {
public:
    EditorView() : PLView(11630, PLPoint(45, 0), PLSize(275, 240)) {}
    void Listen(PLMessage* message) override {
        if (const auto* state = dynamic_cast<const VtStateMessage*>(message)) {
            states.push_back(state->GetState());
        }
    }
    std::vector<long> states;
};

class InputMethod : public ::testing::Test {
protected:
    void SetUp() override {
        root = std::make_unique<PLView>(0, PLPoint(0, 0), PLSize(320, 240));
        PLAppContext::GetInstance()->GetScreen().SetRoot(root.get());
        view = new EditorView();
        root->AddSubPane(view, false);
        field = MakeVtEditField(11632, PLPoint(0, 75), PLSize(30, 60), "1", true, -1, 0, 1, 3,
                                kEmptyString, 1, 0, nullptr, true, kVtEditFieldRect, -1, true);
        view->AddSubPane(field, false);
        ime.reset(IMEManagerFactory::createIMEManager());
        ime->RegisterView(view);
    }
    void TearDown() override {
        ime.reset();
        PLAppContext::GetInstance()->GetEventLoop().ProcessIdle();  // closed keyboards go
        PLAppContext::GetInstance()->GetScreen().SetRoot(nullptr);
        root.reset();
    }
    static void TypeThroughTheLoop(const std::string& text) {
        PLEvent event;
        event.kind = PLEvent::Kind::Text;
        event.text = text;
        PLAppContext::GetInstance()->GetEventLoop().Dispatch(event);
    }

    std::unique_ptr<PLView> root;
    EditorView* view = nullptr;
    VtEditField* field = nullptr;
    std::unique_ptr<IMEManager> ime;
};

TEST_F(InputMethod, TheKeypadTakesDigitsOnlyWithinTheFieldsLimit) {
    ASSERT_TRUE(ime->Open(kIMEDigits, view));
    ime->Attach(field->GetEditor());
    EXPECT_TRUE(ime->IsOpen());
    EXPECT_NE(root->FindPane(50020), nullptr) << "the keyboard is on the screen";
    EXPECT_TRUE(field->GetEditor()->HasIME());
    TypeThroughTheLoop("a2b3c4");
    EXPECT_EQ(field->GetString().str(), "123") << "digits only, three bytes at most";
    TypeThroughTheLoop("\b\b9");
    EXPECT_EQ(field->GetString().str(), "19");
    ime->Close();
    EXPECT_EQ(view->states, (std::vector<long>{kVtIMEOpened, kVtIMEClosed}));
    EXPECT_FALSE(PLAppContext::GetInstance()->GetEventLoop().HasTextSink());
    EXPECT_FALSE(field->GetEditor()->HasIME());
    TypeThroughTheLoop("5");
    EXPECT_EQ(field->GetString().str(), "19") << "no input method, no typing";
}

TEST_F(InputMethod, TheFullKeyboardTakesLettersAndReleaseClosesQuietly) {
    ASSERT_TRUE(ime->Open(kIMEAll, view));
    ime->Attach(field->GetEditor());
    TypeThroughTheLoop("ab");
    EXPECT_EQ(field->GetString().str(), "1ab");
    ime->ReleaseView(view);
    EXPECT_FALSE(ime->IsOpen());
    EXPECT_EQ(view->states, (std::vector<long>{kVtIMEOpened})) << "a release sends no notice";
}

TEST_F(InputMethod, AnEditorThatGoesAwayIsForgottenAndTheKeyboardCloses) {
    ASSERT_TRUE(ime->Open(kIMEAll, view));
    ime->Attach(field->GetEditor());
    view->RemoveSubPane(field);
    delete field;
    field = nullptr;
    EXPECT_EQ(ime->GetEditor(), nullptr);
    ime->Type("x");
    EXPECT_FALSE(ime->IsOpen());
    EXPECT_EQ(view->states.back(), kVtIMEClosed);
}

TEST(InputMethodWithoutScreen, OpenFailsWhenThereIsNoRoot) {
    PLAppContext::GetInstance()->GetScreen().SetRoot(nullptr);
    std::unique_ptr<IMEManager> ime(IMEManagerFactory::createIMEManager());
    EXPECT_FALSE(ime->Open(kIMEAll, nullptr));
    EXPECT_FALSE(ime->IsOpen());
}

}  // namespace
