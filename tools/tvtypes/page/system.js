// The views of a system.

const endText = ({element: name, connector, indices}) =>
  (name === null ? "" : name + ".") + connector + (indices === null ? "" : `[${indices.join(", ")}]`);

const typeText = ({type, enumeration}) => enumeration ?? type;

/// Dimensions of what flows.
const dimensionsText = ({dimensions, indices}) => indices === null ? dimensions : null;

/// Returns a text that both ends have, or both.
function atBothEnds(text, missing) {
  return ({source, target}) => {
    const [from, to] = [text(source), text(target)];
    return from === to ? from : `${from ?? missing} → ${to ?? missing}`;
  };
}

const rounded = (number) => String(Number(number.toPrecision(12)));

function formula({factor, offset}) {
  if (factor === null) return null;
  const product = factor === 1 ? "x" : rounded(factor) + " · x";
  return !offset ? product : `${product} ${offset < 0 ? "−" : "+"} ${rounded(Math.abs(offset))}`;
}

const effectWords = {mayOverflow: "may overflow"};

const views = {
  overview: {title: "Overview"},
  findings: findingsView(column("file", "File")),
  connections: {
    title: "Connections", rows: report.connections, kinds: ["connection"],
    key: (row) => `${row.system === null ? "" : row.system + ": "}${endText(row.source)} → ${endText(row.target)}`,
    columns: [
      column("from", "From", {style: "name", value: (row) => endText(row.source)}),
      column("to", "To", {style: "name", value: (row) => endText(row.target)}),
      column("type", "Type", {value: atBothEnds(typeText, "?")}),
      column("unit", "Unit", {value: atBothEnds(({unit}) => unit, "none")}),
      column("dimensions", "Dimensions", {value: atBothEnds(dimensionsText, "scalar")}),
      column("effects", "Value", {value: (row) => row.effects.map((name) => effectWords[name] ?? name)}),
      column("formula", "Conversion", {value: formula}),
      findingCount, column("system", "System", {view: "components"}), column("line", "Line", {number: true}),
    ],
    more: [column("file", "File"),
           column("kinds", "Kinds", {value: ({source, target}) => [source.kind, target.kind]}),
           column("reversed", "Flows from end to start", {value: ({reversed}) => reversed || null})],
    facets: ["effects", "system"],
  },
  parameters: {
    title: "Parameters", rows: report.parameters, kinds: ["parameter"], key: (row) => row.target,
    columns: [
      column("target", "Parameter", {style: "name"}), column("value", "Value", {number: true}),
      column("unit", "Unit"), column("applied", "Becomes", {number: true}),
      column("targetUnit", "Unit of the target"), findingCount,
      column("overriddenBy", "Overridden by"), column("file", "Set in"),
      column("line", "Line", {number: true}),
    ],
    facets: ["file"],
  },
  structs: {
    title: "Structs", rows: report.structs, key: (row) => `${row.source} → ${row.target}`,
    columns: [
      column("source", "From", {style: "name"}), column("target", "To", {style: "name"}),
      column("connected", "Connected", {number: true}), column("elements", "Elements", {number: true}),
      column("sameType", "Same type"),
    ],
    facets: ["sameType"],
  },
  components: {
    title: "Elements", rows: report.components, kinds: ["element"], key: (row) => row.name ?? "(the system)",
    columns: [
      column("path", "Element", {style: "name", value: (row) => row.name ?? "(the system)"}),
      column("kind", "Kind"), column("model", "Model"), column("fmiVersion", "FMI"),
      column("source", "Source"), findingCount, column("file", "File"), column("line", "Line", {number: true}),
    ],
    facets: ["kind"],
  },
};

const page = {
  named: "components",
  counts: () => {
    const {counts} = report;
    return [`SSP ${textOf(report.version)}`, counted(counts.systems, "system", "systems"),
            counted(counts.components, "component", "components"),
            counted(counts.connections, "connection", "connections"),
            counted(counts.parameters, "parameter", "parameters")];
  },
  prepare: indexPlaces,
  subject: subjectRow,
  details: (row) => {
    const isInPicture = state.view === "overview";
    const address = isInPicture ? {view: viewOfRow(row).name, select: row.key}
      : {view: "overview", select: pictureId(row)};
    return address.select === null ? []
      : [element("p", {}, link(address, isInPicture ? "Show in the table" : "Show in the picture"))];
  },
  picture: graph,
  overview: () => [],
  select: markInPicture,
  rowInOverview: (id) => {
    const [, kind, index] = /^(connection|element)s?-(\d+)/.exec(id ?? "") ?? [];
    return kind && (kind === "element" ? report.components : report.connections)[Number(index)];
  },
};

// ---- Rows that findings are about ----

const rowsByPlace = new Map();
const elementsByFile = new Map();

const placeText = (kind, {line, file}, name) => JSON.stringify([kind, line, file, name]);

/// The name of a connection in findings.
const connectionName = ({source, target}) =>
  `${endText({...source, indices: null})} -> ${endText({...target, indices: null})}`;

function indexPlaces() {
  const add = (kind, row, name) => {
    for (const place of [placeText(kind, row, name), placeText(kind, row)]) {
      if (!rowsByPlace.has(place)) rowsByPlace.set(place, row);
    }
  };
  for (const row of report.connections) add("connection", row, connectionName(row));
  for (const row of report.parameters) add("parameter", row, row.target);
  for (const row of report.components) {
    if (!elementsByFile.has(row.file)) elementsByFile.set(row.file, []);
    elementsByFile.get(row.file).push(row);
  }
  for (const rows of elementsByFile.values()) rows.sort((a, b) => a.line - b.line);
}

/// Returns the row on the line of the finding, by its name if there are several; else the element
/// whose lines contain that of the finding.
function subjectRow(finding) {
  const {kind, name} = finding.subject;
  const row = rowsByPlace.get(placeText(kind, finding, name)) ?? rowsByPlace.get(placeText(kind, finding));
  if (row || (kind !== "element" && kind !== "connector")) return row;
  return elementsByFile.get(finding.file)?.findLast(({line}) => line <= finding.line);
}

// ---- The picture ----

const graphStyle = `
  svg { display: block; } .fitted { max-width: 100%; height: auto; }
  .edge, .node, .cluster { cursor: pointer; }
  .chosen path, .chosen polygon { stroke-width: 3; stroke: #0b5cad; }
  .edge.chosen polygon { fill: #0b5cad; }`;

let picture = null;

function graph() {
  if (report.picture === null) return element("p", {class: "muted"}, textOf(report.pictureError));
  const place = embeddedPicture(report.picture, "The elements of the system and their connections", graphStyle);
  picture = place.shadowRoot.querySelector("svg");
  picture.addEventListener("click", (event) => {
    const drawn = event.target.closest("[id^=connection], [id^=element-]");
    if (drawn) change({select: drawn.id.replace(/-connector-.*/, "")});
  });
  const fit = element("input", {type: "checkbox", id: "fit"});
  fit.addEventListener("change", () => picture.classList.toggle("fitted", fit.checked));
  // A picture that is much wider than the page is not legible if it is fitted.
  fit.checked = picture.width.baseVal.value < 1.5 * innerWidth;
  picture.classList.toggle("fitted", fit.checked);
  return element("div", {class: "graph"}, element("label", {class: "muted"}, fit, " Fit to the width"), place);
}

/// Returns the id of a row in the picture, null if it is not drawn. If there are many connections,
/// all from one element to another are drawn as one, with the number of the first.
function pictureId(row) {
  if (picture === null) return null;
  const drawn = (id) => picture.getElementById(id) === null ? null : id;
  if (row === report.components[row.index]) return drawn(`element-${row.index}`);
  if (row !== report.connections[row.index]) return null;
  const first = report.connections.findIndex(({system, source, target}) =>
    system === row.system && source.element === row.source.element && target.element === row.target.element);
  return drawn(`connection-${row.index}`) ?? drawn(`connections-${first}`);
}

function markInPicture(id) {
  picture?.querySelector(".chosen")?.classList.remove("chosen");
  const drawn = id && picture?.getElementById(id);
  drawn?.classList.add("chosen");
  drawn?.scrollIntoView({block: "nearest", inline: "nearest"});
}
