#include "CdAudioDevice.h"
#include "MciDevice.h"
#include "SequencerDevice.h"
#include "VideoDevice.h"

namespace kavori {

std::unique_ptr<MciDevice> CreateSystemMciDevice(MciDeviceType type)
{
    switch (type) {
    case MciDeviceType::MPEGVideo:
    case MciDeviceType::AVIVideo:
        return std::make_unique<VideoDevice>();
    case MciDeviceType::Sequencer:
        return std::make_unique<SequencerDevice>();
    case MciDeviceType::CdAudio:
        return std::make_unique<CdAudioDevice>();
    }
    return nullptr;
}

} // namespace kavori
