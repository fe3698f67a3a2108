// The products, all invented, that the applications of a sample tree are made of.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace zorvel::tools {

struct Product {
    std::string_view name;   // as an object is named, without blanks
    std::string_view title;  // as users know it; also its folder and registry key
    std::string_view vendor;
    std::string_view exe;        // of its program file, without extension
    std::string_view extension;  // of its documents
    std::string_view description;
};

// Letters outside ASCII stand as octal codes of Windows-1252.
inline constexpr std::array kProducts = {
    Product{"Ledgerline", "Ledgerline", "Tarnwell", "ledger", "llb", "General ledger and period closing"},
    Product{"QuillPad", "QuillPad", "Larkmere", "quill", "qpd", "Word processing for correspondence"},
    Product{"Reader", "Folio Reader", "Ombrelle", "folio", "fol", "Reads and prints folio documents"},
    Product{"Plotwright", "Plotwright", "Halbrook", "plotw", "plw", "Drawings of plant and pipework"},
    Product{"Stockpile", "Stockpile", "Tarnwell", "stock", "stk", "Stock control with barcode readers"},
    Product{"Plan,Build,Ship", "Plan Build Ship", "Quarrymoor", "pbship", "pbs",
            "Project plans from order to dispatch"},
    Product{"Gridmason", "Gridmason", "Larkmere", "gridm", "gmx", "Spreadsheets"},
    Product{"Mailkeep", "Mailkeep", "Pinnockvale", "mailk", "mkp", "Mail and shared calendars"},
    Product{"R\351serve", "R\351serve", "Vintersol", "reserve", "rsv",
            "Books meeting rooms and pool cars (R\351servation)"},
    Product{"Timebeam", "Timebeam", "Kestrow", "tbeam", "tbm", "Time sheets and overtime"},
    Product{"Payround", "Payround", "Tarnwell", "payrnd", "pay",
            "Payroll with tax tables for four countries"},
    Product{"Weighbridge", "Weighbridge", "Quarrymoor", "weighb", "wbr",
            "Reads the lorry scales at the gate"},
    Product{"Slidewell", "Slidewell", "Larkmere", "slidew", "sld", "Presentations"},
    Product{"M\374hlplan", "M\374hlplan", "Vintersol", "muehl", "mpl", "Planning of mills and mixers"},
    Product{"Labnote", "Labnote", "Ombrelle", "labnote", "lbn", "Laboratory journal with signatures"},
    Product{"Tracklay", "Tracklay", "Halbrook", "track", "tly", "Follows consignments by rail and road"},
    Product{"Formcase", "Formcase", "Pinnockvale", "formc", "fcs", "Electronic forms and approvals"},
    Product{"Archivist", "Archivist", "Ombrelle", "archiv", "arv", "Finds scanned invoices and letters"},
    Product{"Terminal3270", "Greenscreen Terminal", "Kestrow", "green", "gst",
            "Terminal to the host at head office"},
    Product{"Costwise", "Costwise", "Tarnwell", "costw", "cwd", "Job costing and estimates"},
    Product{"Tenderbox", "Tenderbox", "Quarrymoor", "tender", "tbx", "Collects and compares tenders"},
    Product{"Callboard", "Callboard", "Kestrow", "callb", "cbd", "Help desk calls and rota"},
    Product{"Mapsheet", "Mapsheet", "Halbrook", "mapsht", "mps", "Site maps with buried services"},
    Product{"Chargehand", "Chargehand", "Quarrymoor", "charge", "chd", "Shift plans for foremen"},
    Product{"Lexikon", "Lexikon", "Vintersol", "lexikon", "lex",
            "Dictionaries: Deutsch, Fran\347ais, Svenska"},
    Product{"Fontroom", "Fontroom", "Larkmere", "fontrm", "fnr", "House typefaces and letterheads"},
    Product{"Calibra", "Calibra", "Ombrelle", "calib", "clb", "Calibration records of gauges"},
    Product{"Pipeflow", "Pipeflow", "Halbrook", "pipef", "pfl", "Pressure and flow calculations"},
    Product{"Courseware", "Courseware", "Pinnockvale", "course", "crs", "Safety courses with a final test"},
    Product{"Cashdesk", "Cashdesk", "Tarnwell", "cashd", "csh", "Canteen tills and daily totals"},
    Product{"Packlist", "Packlist", "Quarrymoor", "packl", "pkl", "Packing lists and labels"},
    Product{"Zipfold", "Zipfold", "Kestrow", "zipf", "zfd", "Packs and unpacks archives"},
    Product{"Viewport", "Viewport", "Halbrook", "viewp", "vpt", "Shows drawings without a licence"},
    Product{"Contractor", "Contractor", "Pinnockvale", "contr", "ctr", "Contracts and their renewal dates"},
    Product{"Fleetbook", "Fleetbook", "Quarrymoor", "fleetb", "flb", "Vehicles, drivers and service dates"},
    Product{"Sampler", "Sampler", "Ombrelle", "sampler", "smp", "Sampling plans for goods received"},
    Product{"Ombud", "Ombud", "Vintersol", "ombud", "omb",
            "Case register of the staff ombudsman (\344renden)"},
    Product{"Gatehouse", "Gatehouse", "Kestrow", "gateh", "gth", "Visitors and passes"},
    Product{"Treasury.Link", "Treasury Link", "Tarnwell", "tlink", "trl", "Payment files to the bank"},
    Product{"Inkwell", "Inkwell", "Larkmere", "inkwell", "ink", "Illustrations and diagrams"},
    Product{"Dockplan", "Dockplan", "Quarrymoor", "dockp", "dkp", "Berths and loading bays"},
    Product{"Heatmap", "Heatmap", "Halbrook", "heatm", "htm2", "Boiler house monitoring"},
    Product{"Surveyor", "Surveyor", "Halbrook", "survey", "svy", "Levels and traverses from the field"},
    Product{"Minutes", "Minutes", "Pinnockvale", "minutes", "mnt", "Minutes and action lists"},
    Product{"Kontoplan", "Kontoplan", "Vintersol", "konto", "kpl", "Charts of accounts (\305rsbokslut)"},
    Product{"Printroom", "Printroom", "Kestrow", "printr", "prm", "Sends jobs to the print room"},
    Product{"Recipebook", "Recipebook", "Ombrelle", "recipe", "rcp", "Formulations and batch sheets"},
    Product{"Warranty", "Warranty", "Pinnockvale", "warran", "wty", "Claims and returns"},
};

}  // namespace zorvel::tools
