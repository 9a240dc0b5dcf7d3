#include "tvx/qt/print/sheet_jobs.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineView>
#include <algorithm>
#include <list>
#include <utility>

namespace tvx::qt {
namespace {

// The end of the program waits no longer than this for an engine that doesn't answer.
constexpr int longest_wait = 30'000;

struct Job {
  int number;
  QPointer<QWebEnginePage> page;
  QPageLayout layout;
  std::function<void(const Sheets&)> done;
  Sheets sheets;
  bool is_under_way = false, is_over = false;
};

void read_facts(const QString& facts, Sheets& sheets) {
  const QJsonObject all = QJsonDocument::fromJson(facts.toUtf8()).object();
  sheets.title = all[u"title"].toString();
  sheets.language = all[u"language"].toString();
  for (const QJsonValue& each : all[u"headings"].toArray())
    sheets.headings.push_back({each[u"level"].toInt(1), each[u"text"].toString(), each[u"name"].toString()});
}

/// All jobs of the program, and the pages that are there for them alone.
class SheetJobs final : public QObject {
 public:
  static SheetJobs& all();

  void add(QWebEnginePage& page, const QPageLayout& layout, std::function<void(const Sheets&)> done);
  bool has(const QWebEnginePage* page) const;
  /// A page without a view stays until what is under way is done. What it hasn't begun it doesn't do any
  /// more.
  void keep(QWebEnginePage* page);
  void wait_for_all();

 private:
  SheetJobs();
  Job* find(int number);
  void start_next(QWebEnginePage* page);
  void print(Job& job);
  void finish(int number, const QByteArray& pdf);
  void end(int number);
  void give_up(const QWebEnginePage* page);

  std::list<Job> jobs_;
  int last_number_ = 0;
  QList<QWebEnginePage*> kept_;
  QPointer<QEventLoop> waiting_;
};

QPointer<SheetJobs> the_jobs;

SheetJobs& SheetJobs::all() {
  if (!the_jobs) the_jobs = new SheetJobs;
  return *the_jobs;
}

// A host may end the loop and delete its widgets afterwards: what is still under way then is waited for when
// the application goes, which it does before the engine.
SheetJobs::SheetJobs() {
  connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &SheetJobs::wait_for_all);
  qAddPostRoutine([] {
    if (!the_jobs) return;
    the_jobs->wait_for_all();
    delete the_jobs;
  });
}

bool SheetJobs::has(const QWebEnginePage* page) const {
  return std::ranges::any_of(jobs_, [page](const Job& job) { return job.page == page; });
}

void SheetJobs::add(QWebEnginePage& page, const QPageLayout& layout,
                    std::function<void(const Sheets&)> done) {
  const bool is_first = !has(&page);
  jobs_.push_back({++last_number_, &page, layout, std::move(done), {}});
  if (!is_first) return;
  connect(&page, &QWebEnginePage::renderProcessTerminated, this, [this, &page] { give_up(&page); });
  connect(&page, &QObject::destroyed, this, [this] { give_up(nullptr); });
  start_next(&page);
}

Job* SheetJobs::find(int number) {
  const auto job = std::ranges::find(jobs_, number, &Job::number);
  return job == jobs_.end() || job->is_over || !job->page ? nullptr : &*job;
}

void SheetJobs::start_next(QWebEnginePage* page) {
  const auto job = std::ranges::find_if(jobs_, [page](const Job& each) { return each.page == page; });
  if (job == jobs_.end()) {
    disconnect(page, nullptr, this, nullptr);
    if (kept_.removeOne(page)) delete page;
  } else if (!job->is_over) {
    print(*job);
  }
}

// Both are asked for at once, and done in this order: nothing may be left to begin when the view has gone.
void SheetJobs::print(Job& job) {
  job.is_under_way = true;
  // After a process that has died, and has no successor yet, nobody would answer.
  if (job.page->renderProcessPid() == 0) return finish(job.number, {});
  const QPointer<SheetJobs> alive(this);
  job.page->runJavaScript(QStringLiteral("globalThis.tvxView ? tvxView.markForPaper() : ''"),
                          QWebEngineScript::ApplicationWorld,
                          [alive, number = job.number](const QVariant& facts) {
                            if (Job* marked = alive ? alive->find(number) : nullptr)
                              read_facts(facts.toString(), marked->sheets);
                          });
  job.page->printToPdf(
      [alive, number = job.number](const QByteArray& pdf) {
        if (alive) alive->finish(number, pdf);
      },
      job.layout);
}

// The engine is in the middle of something, and who is told may delete whatever they like: they are told in a
// turn of its own.
void SheetJobs::finish(int number, const QByteArray& pdf) {
  const auto job = std::ranges::find(jobs_, number, &Job::number);
  if (job == jobs_.end() || std::exchange(job->is_over, true)) return;
  job->sheets.pdf = pdf;
  QTimer::singleShot(0, this, [this, number] { end(number); });
}

void SheetJobs::end(int number) {
  const auto found = std::ranges::find(jobs_, number, &Job::number);
  const Job job = std::move(*found);
  jobs_.erase(found);
  if (job.page && !kept_.contains(job.page))
    job.page->runJavaScript(QStringLiteral("if (globalThis.tvxView) tvxView.unmarkForPaper()"),
                            QWebEngineScript::ApplicationWorld);
  job.done(job.sheets);
  if (job.page) start_next(job.page);
  if (jobs_.empty() && waiting_) waiting_->quit();
}

// A process that has died, or a page that others have deleted, answers to nothing.
void SheetJobs::give_up(const QWebEnginePage* page) {
  for (const Job& job : std::list<Job>(jobs_))
    if (job.page == page) finish(job.number, {});
}

void SheetJobs::keep(QWebEnginePage* page) {
  page->setParent(this);  // before its view lets go of it, or that would delete it
  if (QWebEngineView* view = QWebEngineView::forPage(page)) view->setPage(nullptr);
  page->setWebChannel(nullptr);
  kept_.push_back(page);
  for (const Job& job : std::list<Job>(jobs_))
    if (job.page == page && !job.is_under_way) finish(job.number, {});
}

void SheetJobs::wait_for_all() {
  if (jobs_.empty() || waiting_) return;
  QEventLoop loop;
  waiting_ = &loop;
  QTimer::singleShot(longest_wait, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace

void make_sheets(QWebEnginePage& page, const QPageLayout& layout, std::function<void(const Sheets&)> done) {
  SheetJobs::all().add(page, layout, std::move(done));
}

void let_go(QWebEnginePage* page) {
  if (page && the_jobs && the_jobs->has(page)) return the_jobs->keep(page);
  delete page;
}

}  // namespace tvx::qt
