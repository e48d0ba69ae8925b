#include "tools/demo/Scene.h"

#include "tools/stage/KeysDown.h"

#include <csignal>
#include <iostream>

namespace kestrel {

Scene::Scene(std::filesystem::path programs, std::filesystem::path pictures,
    std::filesystem::path approved, const stage::Studio::Options& options)
    : m_performance(std::move(programs), std::move(pictures), options)
    , m_keys(m_performance)
    , m_setup(m_performance)
    , m_panel(m_performance, std::move(approved))
    , m_activity(m_performance)
    , m_sheet(m_performance)
    , m_doctor(m_performance)
{
}

int Scene::play(Ending ending)
{
    m_keys.assign();
    openStudio();
    goOnline();
    m_keys.pressAndRelease();
    m_keys.pressFourShortcuts();
    m_keys.openSet();
    m_setup.assignKey();
    m_panel.openFromTray();
    m_panel.mirrorEditing();
    m_panel.fallSilent();
    m_panel.comeBack();
    m_doctor.findNothingWrong();
    m_keys.pressBehindAnotherWindow();
    m_activity.explainAndPlayBack();
    m_sheet.save();
    if (ending == Ending::WhenTheWorkstationIsClosed)
        waitForUser();
    quit();
    return m_performance.missing();
}

void Scene::openStudio()
{
    m_performance.workstation = m_performance.studio.start("Pro Tools");
    m_performance.check("the workstation is in front",
        m_performance.workstation->waitForLineWith("ready", Performance::StartTimeout).has_value());
    m_performance.console = m_performance.studio.start("zenta-console");
    m_performance.kestrel = m_performance.studio.start("kestrel");
}

void Scene::goOnline()
{
    std::cout << "waiting for the link …\n";
    m_performance.check("the console's heartbeat is answered: the link is online",
        m_performance.console->waitForLineWith("answer 90 00 7F", Performance::LinkTimeout)
            .has_value());
    m_panel.seeOnline();
    m_performance.photograph("online");
}

void Scene::waitForUser()
{
    std::cout << "close the workstation's window to end the demonstration\n";
    while (!m_performance.workstation->wait(stage::milliseconds(0))) {
        // A program whose output nobody reads stops when the pipe is full.
        static_cast<void>(m_performance.workstation->linesUntilQuiet(Performance::Quiet));
        static_cast<void>(m_performance.console->linesUntilQuiet(stage::milliseconds(0)));
    }
}

void Scene::quit()
{
    constexpr stage::milliseconds EndTimeout { 10000 };
    m_performance.kestrel->signal(SIGTERM);
    m_performance.check(
        "the utility ends in an orderly way", m_performance.kestrel->wait(EndTimeout) == 0);
    m_performance.check(
        "no key is left down", stage::keysDown(m_performance.studio.displayName()).empty());
    m_performance.console->writeLine("quit");
    m_performance.check("the console ends", m_performance.console->wait(EndTimeout) == 0);
    m_doctor.findMissingConsole();
}

} // namespace kestrel
