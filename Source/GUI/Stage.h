#pragma once

/// How the chart is drawn, for the whole process. Main thread only.
class Stage {
public:
    static constexpr int kBlank = 1;  ///< axes from 0 to 1 and no series
    static constexpr int kLive = 2;

    inline static int iStage = kBlank;
};
