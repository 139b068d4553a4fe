// What VTK tells while it works.
#pragma once

#include "Progress.h"

#include <vtkAlgorithm.h>
#include <vtkNew.h>
#include <vtkOutputWindow.h>
#include <vtkSmartPointer.h>

#include <string>

namespace VORN3D::program
{

/// While it lives, VTK's messages are collected instead of being printed.
class VtkMessages
{
public:
    VtkMessages();
    ~VtkMessages();
    VtkMessages(const VtkMessages&) = delete;
    VtkMessages& operator=(const VtkMessages&) = delete;

    bool hasError() const;

    /// The first error, without VTK's source file and line, or the alternative if there is none.
    std::string getFirstError(const std::string& alternative) const;

private:
    class Collector;

    std::size_t findError() const;

    vtkSmartPointer<vtkOutputWindow> m_pOriginal;
    vtkNew<Collector> m_pCollector;
};

/// Shows the progress of a reader, and makes it stop when the user interrupts the program. It must not live
/// longer than the algorithm's last execution.
class VtkProgress
{
public:
    VtkProgress(const std::string& label, vtkAlgorithm& algorithm);

private:
    void update();

    vtkAlgorithm& m_algorithm;
    Progress m_progress;
};

} // namespace VORN3D::program
