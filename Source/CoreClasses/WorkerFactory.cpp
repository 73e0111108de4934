#include "CoreClasses/WorkerFactory.h"

#include "CoreClasses/IOTestParameters.h"
#include "CoreClasses/MACWorker.h"
#include "CoreClasses/PosixFileWorker.h"
#include "CoreClasses/SelfTestFileWorker.h"

SelectedWorker MakeWorker(int fileAccessMethod) {
    switch (fileAccessMethod) {
        case kAccessMacFileManager:
            return {std::make_unique<MACWorker>(), "MAC File API"};
        case kAccessSelfTest:
            return {std::make_unique<SelfTestFileWorker>(), "Self Test"};
        case kAccessPosix:
            return {std::make_unique<PosixFileWorker>(), "Posix API Test"};
        default:
            return {};
    }
}
