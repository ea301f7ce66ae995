// Gallery screens: logging of every message and the screen's own reactions.
#include "GalleryScreen.h"

#include "GalleryApp.h"
#include "PLMessage.h"
#include "VtStateMessage.h"

GalleryScreen::GalleryScreen(uint32_t id, GalleryApp& app)
    : PLView(id, PLPoint(kPLStatusHeight, 0),
             PLSize(kPLScreenHeight - kPLStatusHeight, kPLScreenWidth)),
      mApp(app) {
    SetHasBmpBackground(true, true);
}

std::string GalleryScreen::Describe(const PLMessage& message) {
    const uint32_t kind = message.GetMessageID();
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const char c = static_cast<char>((kind >> shift) & 0xFF);
        if (c < 0x20 || c > 0x7E) {
            name.clear();
            break;
        }
        name += c;
    }
    if (kind == kPLMsgScroll) {
        // The platform numbers the scroll kind with its characters the other way round.
        name = "rscm";
    } else if (name.empty()) {
        name = std::to_string(kind);
    }
    long value = static_cast<long>(message.GetUserMessageID());
    if (const auto* state = dynamic_cast<const VtStateMessage*>(&message)) {
        value = state->GetState();
    } else if (const auto* scroll = dynamic_cast<const PLScrollerMessage*>(&message)) {
        value = scroll->GetOffset().v;
    }
    return name + " " + std::to_string(message.GetSenderID()) + " " + std::to_string(value);
}

void GalleryScreen::Listen(PLMessage* message) {
    if (message == nullptr) {
        return;
    }
    mApp.Log(Describe(*message));
    if (mHandler) {
        mHandler(*message);
    }
}
