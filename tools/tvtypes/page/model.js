// The views of a model.

const variableCount = column("variables", "Variables", {
  number: true, value: (row) => Array.isArray(row.variables) ? row.variables.length : row.variables,
});
const variableColumns = [
  column("name", "Name", {style: "name"}),
  column("type", "Type", {view: "types"}),
  column("unit", "Unit", {view: "units"}),
  column("dimensions", "Dimensions"),
  column("start", "Start", {number: true}),
  column("min", "Min", {number: true}),
  column("max", "Max", {number: true}),
];
const description = column("description", "Description", {style: "text"});

const views = {
  overview: {title: "Overview"},
  findings: findingsView(),
  variables: {
    title: "Variables", rows: report.variables, kinds: ["variable"], key: (row) => row.name,
    columns: [
      ...variableColumns, description, column("causality", "Causality"),
      column("variability", "Variability"), column("line", "Line", {number: true}), findingCount,
    ],
    more: [column("initial", "Initial"), column("nominal", "Nominal"),
           column("displayUnit", "Display unit"), column("baseType", "Base type"),
           column("aliases", "Aliases")],
    facets: ["causality", "variability", "type", "unit"],
  },
  types: {
    title: "Types", rows: report.types, kinds: ["type", "struct"], key: (row) => row.name,
    columns: [
      column("name", "Name", {style: "name"}), column("kind", "Kind"), column("aliasOf", "Alias of", {view: "types"}),
      column("size", "Bytes", {number: true}), column("storage", "Storage"),
      column("unit", "Unit", {view: "units"}), column("min", "Min", {number: true}),
      column("max", "Max", {number: true}),
      column("items", "Items", {
        value: (row) => (row.items ?? []).map((item) => `${item.name} = ${item.value}`),
      }),
      column("elements", "Elements", {number: true}), column("leaves", "Leaves", {number: true}),
      description, variableCount, findingCount,
    ],
    more: [column("originalName", "Original name"), column("id", "Id")],
    users: {member: "usedBy", facet: "type"},
    facets: ["kind"],
  },
  units: {
    title: "Units", rows: report.units, kinds: ["unit"], key: (row) => row.name,
    columns: [
      column("name", "Name", {style: "name"}), column("expression", "Read as"), column("from", "From"),
      column("baseUnits", "Base units"),
      column("displayUnits", "Display units", {
        value: (row) => (row.displayUnits ?? []).map((unit) => unit.name),
      }),
      variableCount, findingCount,
    ],
    more: [column("id", "Id")],
    users: {member: "variables", facet: "unit"},
    facets: ["from"],
  },
  dimensions: {
    title: "Dimensions", rows: report.dimensions, kinds: ["dimension"], key: (row) => row.text,
    columns: [column("text", "Dimensions", {style: "name"}), variableCount, findingCount],
    more: [column("id", "Id")],
    users: {member: "variables", facet: "dimensions"},
    facets: [],
  },
  facts: {
    title: "Facts", rows: report.facts, kinds: ["fact"], key: (row) => row.text,
    columns: [column("text", "Fact", {style: "name"}), column("blocks", "Stated by", {style: "text"}), findingCount],
    facets: [],
  },
  structs: {title: "Structs", count: report.layouts.pictures.length, build: buildPictures},
};

const page = {
  named: "variables",
  counts: () => {
    const {counts} = report;
    return [`FMI ${textOf(report.fmiVersion)}`, counted(counts.variables, "variable", "variables"),
            counted(counts.inputs, "input", "inputs"), counted(counts.outputs, "output", "outputs"),
            counted(counts.parameters, "parameter", "parameters")];
  },
  prepare: (byKind) => {
    byKind.set("displayUnit", new Map(
      report.units.flatMap((unit) => (unit.displayUnits ?? []).map((display) => [display.name, unit]))));
    if (report.layouts.pictures.length === 0) delete views.structs;
  },
  details: (row) => [...displayUnits(row), ...usersList(viewOfRow(row), row)],
  overview: interfaceTables,
};

function usersList(view, row) {
  const names = view.users ? row[view.users.member] ?? [] : [];
  if (names.length === 0) return [];
  const most = 100;
  const all = views.variables?.facets.includes(view.users.facet)
    ? link({view: "variables", [view.users.facet]: row.originalName ?? row.name ?? row.text}, "Show them in the table") : "";
  return [element("h3", {}, "Used by"), all,
          element("ul", {}, names.slice(0, most).map((name) => element("li", {}, reference("variables", name)))),
          names.length > most ? element("p", {class: "muted"}, `and ${names.length - most} more`) : ""];
}

function displayUnits({displayUnits: units}) {
  if (!units?.length) return [];
  const columns = [column("name", "Name"), column("factor", "Factor", {number: true}),
                   column("offset", "Offset", {number: true}), column("inverse", "Inverse")];
  return [element("h3", {}, "Display units"),
          element("table", {}, element("thead", {}, element("tr", {}, columns.map((c) => heading(c, c.heading)))),
            element("tbody", {}, units.map((unit) => element("tr", {}, columns.map((c) => cell(c, unit))))))];
}

function interfaceTables() {
  const parts = [];
  const most = 50;
  for (const [title, causality] of [["Inputs", "input"], ["Outputs", "output"], ["Parameters", "parameter"]]) {
    const rows = (views.variables?.rows ?? []).filter((row) =>
      row.causality === causality || (causality === "parameter" && row.causality === "structuralParameter"));
    if (rows.length === 0) continue;
    const columns = [...variableColumns, description, findingCount]
      .filter(({value}) => rows.some((row) => textOf(value(row)) !== ""));
    parts.push(element("h2", {}, title, " ", element("span", {class: "muted"}, rows.length.toLocaleString("en"))),
      staticTable(columns, rows.slice(0, most)),
      rows.length > most ? element("p", {}, link({view: "variables", causality}, `Show all ${rows.length}`)) : "");
  }
  return parts;
}

/// The colours of the pictures in the page; those of the pictures alone are in the pictures.
const pictureStyle = `
  text { fill: var(--text); font-family: inherit; } .note, .tick, .detail { fill: var(--muted); }
  rect { stroke: var(--edge); } line { stroke: var(--edge); } .paper { fill: var(--paper); stroke: none; }
  .struct { fill: var(--struct); } .structArray { fill: var(--array); } .leaf { fill: var(--leaf); }
  .padding { fill: url(#hatching); stroke: var(--hatch); } .thin { fill: var(--hatch); stroke: none; }
  .hatch { stroke: var(--hatch); }`;

function buildPictures() {
  for (const {name, svg} of report.layouts.pictures) {
    const place = embeddedPicture(svg, `Memory layout of ${visible(name)}`, pictureStyle);
    place.dataset.name = name;
    find("#structs").append(place);
  }
  if (report.layouts.omitted > 0) {
    find("#structs").append(element("p", {class: "muted"},
      `${report.layouts.omitted} more structs are not drawn here; tvtypes layout draws each.`));
  }
}
