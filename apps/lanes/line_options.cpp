#include "lanes/line_options.h"

#include "command_line.h"
#include "lanes/job_hash.h"

#include <QFileInfo>

#include <iostream>

namespace vrk::lanes {

void describe_line(CLI::App& app, LineOptions& options)
{
    app.add_option("JOB", options.job, "a project (.vrk): the same for all lanes")->required();
    add_repeated(app, "--port", options.ports, "the port of a lane; once for each lane, in their order")
        ->type_name("PORT");
    app.add_option("--pause", options.pause_s, "seconds to change chips")->type_name("N")->check(CLI::Range(0, 3600));
    app.add_option("--station", options.station, "its name in the record; without it the machine's")->type_name("NAME");
    app.add_option("--language", options.language, "zh or en")->type_name("WORD")->check(CLI::IsMember({"zh", "en"}));
    options.keeps_books = app.add_option("--ledger", options.ledger,
                                 "each chip is recorded and its numbers are drawn there: a file or the address of a "
                                 "server; the user's own")
                              ->type_name("[ADDRESS]")
                              ->expected(0, 1);
    // Lanes that counted each for itself would give a number twice.
    app.add_option("--order", options.order, "the order that the numbers belong to: the project's name")
        ->type_name("NAME")
        ->needs(options.keeps_books);
    app.add_option("--number", options.number, "next=N: what a new order begins with")
        ->type_name("FIELDS")
        ->needs(options.keeps_books);
}

std::optional<LineTerms> terms_of(const LineOptions& options, bool english, const QString& folder)
{
    LineTerms terms;
    terms.job = QFileInfo(QString::fromStdString(options.job)).absoluteFilePath();
    if (sha256_of_file(terms.job.toStdString()).empty()) {
        std::cerr << options.job << " cannot be read" << std::endl;
        return std::nullopt;
    }
    terms.vrk = folder + "/vrk";
    terms.english = english;
    terms.station = QString::fromStdString(options.station);
    const auto add = [&terms](const char* name, const std::string& value) {
        if (!value.empty())
            terms.more << name << QString::fromStdString(value);
    };
    add("--pause", options.pause_s);
    add("--order", options.order);
    add("--number", options.number);
    if (options.keeps_books->count() > 0) {
        terms.more << "--ledger";
        if (!options.ledger.empty())
            terms.more << QString::fromStdString(options.ledger);
    }
    return terms;
}

QStringList ports_of(const LineOptions& options)
{
    QStringList ports;
    for (const std::string& port : options.ports)
        ports << QString::fromStdString(port);
    return ports;
}

} // namespace vrk::lanes
